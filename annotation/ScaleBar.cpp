// SPDX-License-Identifier: Apache-2.0
#include <annotation/ScaleBar.h>

#include <annotation/OverlayFont.h>

#include <QtCore/QLocale>

#include <algorithm>
#include <cmath>

namespace {

/// The smallest of 1, 2 and 5 times a power of ten that is at least @p least.
double roundStep(double least)
{
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= least * (1.0 - 1e-9))
            return factor * power;
    return 10.0 * power;
}

QString numberText(double number)
{
    const QString digits = QLocale::c().toString(std::abs(number), 'g', 4);
    return number < 0.0 ? QChar(0x2212) + digits : digits;
}

/// Where the parts of a scale bar are, in whole pixels.
class BarLayout
{
public:
    BarLayout(Overlay& overlay, const KVScaleBar& bar, const QSize& size)
        : m_overlay(overlay), m_bar(bar), m_height(overlay.textHeight)
    {
        constexpr double shareOfHeight = 0.4;
        constexpr double shareOfWidth = 0.4; // the legend, at the left, has the rest
        const double length = std::round(shareOfHeight * size.height());
        m_numbers =
            kvScaleBarNumbers(double(bar.low), double(bar.high), static_cast<int>(length / (2.0 * m_height)));
        double widest = 0.0;
        for (const double number : m_numbers)
            widest = std::max(widest, kvTextExtent(overlay, numberText(number), false).width());
        m_right = size.width() - m_height;
        const double left = std::round(m_right - widest - 2.0 * m_height);
        m_titleBottom = 2.2 * m_height; // of the first row of the legend
        m_rect = QRectF(left, std::round(m_titleBottom + 0.8 * m_height), m_height, length);
        m_titleWidth = shareOfWidth * size.width() - m_height;
        m_fits = m_rect.height() >= 4.0 * m_height && left >= m_height &&
                 m_rect.bottom() + m_height <= size.height();
    }

    void add() const
    {
        if (!m_fits || m_bar.colors.isEmpty() || m_numbers.empty())
            return;
        addColors();
        for (const double number : m_numbers)
            addNumber(number);
        addTitle();
    }

private:
    void addColors() const
    {
        const double edge = std::max(1.0, m_height / 12.0);
        m_overlay.boxes.append({m_rect.adjusted(-edge, -edge, edge, edge), m_overlay.ink});
        const qsizetype count = m_bar.colors.size();
        const auto border = [&](qsizetype i) {
            return std::round(m_rect.bottom() - m_rect.height() * double(i) / double(count));
        };
        for (qsizetype i = 0; i < count; ++i)
            m_overlay.boxes.append(
                {QRectF(QPointF(m_rect.left(), border(i + 1)), QPointF(m_rect.right(), border(i))),
                 m_bar.colors[i]});
    }

    void addNumber(double number) const
    {
        const double share = (number - double(m_bar.low)) / (double(m_bar.high) - double(m_bar.low));
        const double y = m_rect.bottom() - share * m_rect.height();
        const double tick = std::max(1.0, m_height / 12.0);
        m_overlay.lines.append(
            {{m_rect.right(), y}, {m_rect.right() + 0.35 * m_height, y}, tick, m_overlay.ink});
        const QString text = numberText(number);
        const QSizeF extent = kvTextExtent(m_overlay, text, false);
        m_overlay.texts.append(
            {text,
             QPointF(std::round(m_rect.right() + 0.6 * m_height), std::round(y - extent.height() / 2.0)),
             false});
    }

    void addTitle() const
    {
        const QString text = kvElided(m_overlay, m_bar.title, false, m_titleWidth);
        if (text.isEmpty())
            return;
        const QSizeF extent = kvTextExtent(m_overlay, text, false);
        m_overlay.texts.append(
            {text, QPointF(std::round(m_right - extent.width()), std::round(m_titleBottom - extent.height())),
             false});
    }

    Overlay& m_overlay;
    const KVScaleBar& m_bar;
    double m_height; // of the text
    std::vector<double> m_numbers;
    QRectF m_rect;
    double m_right = 0.0;
    double m_titleBottom = 0.0;
    double m_titleWidth = 0.0;
    bool m_fits = false;
};

} // namespace

std::vector<double> kvScaleBarNumbers(double low, double high, int most)
{
    if (!std::isfinite(low) || !std::isfinite(high) || !(low < high))
        return {};
    const int count = std::clamp(most, 1, 10);
    const double step = roundStep((high - low) / count);
    const double nearest = high - 0.7 * (high - low) / count;
    std::vector<double> numbers;
    const double first = std::ceil(low / step - 1e-9);
    for (int i = 0; i <= count && (first + i) * step <= nearest; ++i)
        numbers.push_back((first + i) * step);
    numbers.push_back(high);
    return numbers;
}

void kvAddScaleBar(Overlay& overlay, const KVScaleBar& bar, const QSize& size)
{
    if (!bar.colors.isEmpty() && bar.low < bar.high)
        BarLayout(overlay, bar, size).add();
}
