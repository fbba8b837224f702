// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/GamutEntry.h"
#include "model/inputs/GamutSource.h"

#include <QtWidgets/QDialog>

#include <optional>

/// What is known of a gamut and of its profile, in a non-modal dialog: the description of the profile first,
/// then its file, how the gamut was computed, and its numbers.
class GamutInformation : public QDialog
{
    Q_OBJECT
public:
    using Row = std::pair<QString, QString>; ///< title and value

    /// @param source from which the gamut was computed, if it is known
    GamutInformation(const GamutEntry& entry, const std::optional<GamutSource>& source,
                     QWidget* parent = nullptr);

    static QList<Row> rowsOf(const GamutEntry& entry, const std::optional<GamutSource>& source);

private:
    void copy() const;

    QList<Row> m_rows;
};
