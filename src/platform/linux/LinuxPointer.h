#pragma once

#include "platform/Pointer.h"

#include <QAbstractNativeEventFilter>

// The pointer through Qt's X connection. While watched, XInput raw motion (real devices) and
// root-window motion (warps, as xdotool makes them) wake the caller; at rest nothing arrives.
class LinuxPointer final : public Pointer, private QAbstractNativeEventFilter
{
    Q_OBJECT
public:
    explicit LinuxPointer(QObject* parent = nullptr);
    ~LinuxPointer() override;

    QPointF position() const override;
    bool buttonsPressed() const override;
    void setWatching(bool on) override;

private:
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

    bool m_watching = false;
    bool m_filterInstalled = false;
    quint8 m_xinput = 0;
    quint32 m_root = 0;
};
