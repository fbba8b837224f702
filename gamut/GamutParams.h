// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <functional>
#include <memory>
#include <utility>

/// The parameters of a load as the host reads them later. Copies need no memory.
class GamutParams
{
public:
    GamutParams() = default;
    GamutParams(const QHash<QString, QVariant>& values) : m_values(values) {}
    /// Parameters that @p make makes when they are read. A load makes no QHash itself, because QHash ends the
    /// process if there is not enough memory for an insertion.
    explicit GamutParams(std::function<QHash<QString, QVariant>()> make)
        : m_make(std::make_shared<const std::function<QHash<QString, QVariant>()>>(std::move(make)))
    {
    }

    QHash<QString, QVariant> values() const { return m_make ? (*m_make)() : m_values; }

private:
    QHash<QString, QVariant> m_values;
    std::shared_ptr<const std::function<QHash<QString, QVariant>()>> m_make;
};
