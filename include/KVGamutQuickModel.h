// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QVariant>
#include <QtQml/qqmlregistration.h>

#include <memory>

#if defined(KV3DVIEWERQUICK_LIBRARY)
#define KV3DVIEWERQUICK_EXPORT Q_DECL_EXPORT
#else
#define KV3DVIEWERQUICK_EXPORT Q_DECL_IMPORT
#endif

class KVGamutView;

/// The gamuts of a KVGamutQuickView as a list for QML: one row each, in the order in which they were first
/// loaded. Delegates read the roles, and write those of the look; a row appears when its load starts.
///
/// Looks that C++ code sets with KVGamutView, and gamuts that it removes, are not noticed. GUI thread only.
class KV3DVIEWERQUICK_EXPORT KVGamutQuickModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("It is KVGamutQuickView.gamuts.")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    /// What a row tells. The names for delegates are those of the comments.
    enum Role : int
    {
        IdRole = Qt::UserRole, ///< gamutId (string)
        SourceRole,            ///< source: the URL given to load(); empty for gamuts that C++ code loaded
        LoadedRole,            ///< loaded (bool): the gamut is shown, unless it is hidden
        LoadingRole,           ///< loading (bool)
        ProgressRole,          ///< progress of the load, 0..1
        ErrorRole,             ///< errorText: why the last load failed, in English; empty if it did not
        VolumeRole,            ///< volume, cubic dE76; 0 before it is loaded
        UncertaintyRole,       ///< uncertainty of the volume, cubic dE76
        VisibleRole,           ///< gamutVisible (bool); may be written
        ColorRole,             ///< gamutColor; may be written; an invalid colour: its own colours
        OpacityRole,           ///< gamutOpacity, 0..1; may be written
        ModeRole,              ///< displayMode (KVGamutQuickView.DisplayMode); may be written
    };
    Q_ENUM(Role)

    explicit KVGamutQuickModel(KVGamutView* view, QObject* parent = nullptr); ///< of the gamuts of @p view
    ~KVGamutQuickModel() override;

    int count() const;                                                ///< number of rows
    int rowCount(const QModelIndex& parent = {}) const override;      ///< see QAbstractItemModel
    QVariant data(const QModelIndex& index, int role) const override; ///< see QAbstractItemModel
    /// Sets a part of the look; false for other roles and values of another type.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override; ///< see QAbstractItemModel
    QHash<int, QByteArray> roleNames() const override;            ///< see Role

    Q_INVOKABLE int rowOf(const QString& gamutId) const;       ///< -1 if there is none
    Q_INVOKABLE QString errorOf(const QString& gamutId) const; ///< see ErrorRole

Q_SIGNALS:
    void countChanged(); ///< count() changed

private:
    friend class KVGamutQuickView; // tells of loads, removals and looks
    class Q_DECL_HIDDEN Private;
    std::unique_ptr<Private> d;
};
