#pragma once

#include "platform/Displays.h"

// The screens Qt knows, main screen first. Linux displays report no camera housing, so every one
// gets the fallback notch. Reduced motion comes from the desktop's settings portal (GNOME's
// animation switch, KDE's animation speed), read once at start without blocking.
class LinuxDisplays final : public Displays
{
    Q_OBJECT
public:
    explicit LinuxDisplays(QObject* parent = nullptr);

    QList<DisplayInfo> displays() const override;
    std::optional<int> focusedDisplay() const override;
    bool reduceMotion() const override { return m_reduceMotion; }

private:
    void watchScreen(class QScreen* screen);
    void readMotionSetting(const QString& group, const QString& key);

    bool m_reduceMotion = false;
};
