// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/GamutListModel.h"

#include <KVGamutView.h>

#include <QtCore/QObject>

/// Explains the view of the window: scales instead of the axes, and a legend of the visible gamuts in which
/// the active one is emphasised. Both must outlive it.
class AnnotationBinding : public QObject
{
    Q_OBJECT
public:
    AnnotationBinding(GamutListModel& model, KVGamutView& view, QObject* parent = nullptr);

    bool isShown() const { return m_shown; } ///< true at first
    void setShown(bool shown);
    /// While true, the legend and the scales are shown in large type, whatever isShown() says.
    void setPresenting(bool presenting);
    /// To be called when the axes are shown or hidden: the scales follow them.
    void update();

Q_SIGNALS:
    /// What the view shows, in words for people who cannot see it: the visible gamuts. After every change of
    /// them and each call of update().
    void described(const QString& words);

private:
    static QString wordsOf(const KVAnnotations& annotations);
    KVAnnotations annotations() const;

    GamutListModel& m_model;
    KVGamutView& m_view;
    bool m_shown = true;
    bool m_presenting = false;
};
