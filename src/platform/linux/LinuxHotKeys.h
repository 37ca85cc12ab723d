#pragma once

#include "platform/HotKeys.h"

#include <QAbstractNativeEventFilter>
#include <QList>

// A passive key grab on the root window. The grab is repeated with NumLock and CapsLock so the
// shortcut works whatever the lock keys show. Control is the Super key and Option is Alt, so the
// combinations stay clear of the editing shortcuts on Ctrl.
class LinuxHotKeys final : public HotKeys, private QAbstractNativeEventFilter
{
    Q_OBJECT
public:
    explicit LinuxHotKeys(QObject* parent = nullptr);
    ~LinuxHotKeys() override;

    bool registerHotKey(int keyCode, KeyModifiers modifiers) override;
    void unregisterHotKey() override;

private:
    struct Grab
    {
        quint8 keycode;
        quint16 modifiers;
    };

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    void ungrab(const QList<Grab>& grabs);

    QList<Grab> m_grabs;
    QList<quint8> m_keycodes;
    quint16 m_modifiers = 0;
    quint16 m_lockMasks = 0;
    quint32 m_root = 0;
};
