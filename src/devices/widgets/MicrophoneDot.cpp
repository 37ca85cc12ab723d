#include "devices/widgets/MicrophoneDot.h"

#include "devices/DeviceStatus.h"
#include "devices/DeviceTexts.h"
#include "ui/PanelTheme.h"

#include <QPainter>

MicrophoneDot::MicrophoneDot(const DeviceStatus& devices, QWidget* parent) : QWidget(parent)
{
    setFixedSize(sizeHint());
    setActive(devices.microphone());
    connect(&devices, &DeviceStatus::microphoneChanged, this,
            [this, &devices] { setActive(devices.microphone()); });
}

void MicrophoneDot::setActive(bool active)
{
    m_active = active;
    setToolTip(DeviceTexts::microphoneHint(active));
    setAccessibleName(toolTip());
    update();
}

void MicrophoneDot::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_active ? PanelTheme::active() : PanelTheme::raised());
    painter.drawEllipse(QRectF(2.5, 2.5, 7, 7));
}
