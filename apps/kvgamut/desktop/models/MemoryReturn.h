// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutListModel.h"

#include <QtCore/QTimer>

/// Returns memory to the system that the work on gamuts has freed: after they are computed, and after they
/// are removed. The C library would keep it. The list must outlive it.
class MemoryReturn : public QObject
{
    Q_OBJECT
public:
    MemoryReturn(const GamutListModel& gamuts, KVGamutView& view, QObject* parent = nullptr);

private:
    void giveBack();

    KVGamutView& m_view;
    QTimer m_soon;
};
