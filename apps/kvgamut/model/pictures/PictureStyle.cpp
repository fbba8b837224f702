// SPDX-License-Identifier: Apache-2.0
#include "PictureStyle.h"

#include <algorithm>

namespace {

// Found by a search for colours near blue, red, green, purple, yellow and light blue that are far enough
// apart.
const std::array<QColor, 6> onGrey{QColor(1, 39, 136),   QColor(200, 60, 20),  QColor(0, 140, 100),
                                   QColor(160, 82, 181), QColor(250, 190, 60), QColor(120, 210, 250)};
const std::array<QColor, 6> onWhite{QColor(0, 48, 154),    QColor(200, 60, 20), QColor(0, 140, 100),
                                    QColor(151, 102, 165), QColor(235, 170, 0), QColor(100, 190, 235)};
const std::array<QColor, 6> onBlack{QColor(59, 97, 212),   QColor(240, 90, 50),  QColor(40, 180, 130),
                                    QColor(191, 143, 234), QColor(255, 215, 90), QColor(172, 238, 255)};

} // namespace

std::span<const PictureStyle> PictureStyle::all()
{
    static const std::array<PictureStyle, 4> styles{{
        {QStringLiteral("screen"), QColor(Qt::gray), QColor(180, 180, 180), Qt::black, 1.0f, onGrey},
        {QStringLiteral("paper"), Qt::white, QColor(215, 215, 215), Qt::black, 1.0f, onWhite},
        {QStringLiteral("slide"), Qt::white, QColor(215, 215, 215), Qt::black, 1.6f, onWhite},
        {QStringLiteral("dark"), QColor(24, 26, 31), QColor(62, 66, 74), Qt::white, 1.0f, onBlack},
    }};
    return styles;
}

const PictureStyle& PictureStyle::named(const QString& name)
{
    const auto styles = all();
    const auto found = std::find_if(styles.begin(), styles.end(),
                                    [&name](const PictureStyle& style) { return style.name == name; });
    return found == styles.end() ? styles.front() : *found;
}

QColor PictureStyle::key(qsizetype position) const
{
    return keys[static_cast<std::size_t>(position) % keys.size()];
}
