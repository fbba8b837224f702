// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CLI/CLI.hpp>

#include <QtCore/QString>
#include <QtGui/QImage>

/// A picture to compare with: the options --reference and --reference-threshold.
class PictureReference
{
public:
    /// Declares the options on @p parser, which keeps a reference to this object.
    void declare(CLI::App& parser);

    bool isGiven() const { return !m_name.isEmpty(); }
    QString name() const { return m_name; }

    /// Reads the picture; prints why if that fails. @return whether it was read
    bool load();

    /// Compares @p picture with the reference; prints the difference if it is above the threshold.
    /// @return whether it is within the threshold
    bool matches(const QImage& picture) const;

private:
    QString m_name;
    double m_threshold = 0.5; ///< percent
    QImage m_reference;
};
