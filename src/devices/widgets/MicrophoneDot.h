#pragma once

#include <QWidget>

class DeviceStatus;

// A small circle that lights up while the default microphone is in use.
class MicrophoneDot : public QWidget
{
    Q_OBJECT
public:
    explicit MicrophoneDot(const DeviceStatus& devices, QWidget* parent = nullptr);

    bool isActive() const { return m_active; }
    QSize sizeHint() const override { return {12, 12}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void setActive(bool active);

    bool m_active = false;
};
