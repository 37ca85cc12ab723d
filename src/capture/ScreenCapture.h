#pragma once

#include <QObject>

// Screenshots and recordings. While a capture runs the panel neither opens nor takes part in
// hovering.
class ScreenCapture : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool captureBusy READ captureBusy WRITE setCaptureBusy NOTIFY captureBusyChanged)
public:
    using QObject::QObject;

    bool captureBusy() const { return m_captureBusy; }
    void setCaptureBusy(bool busy)
    {
        if (m_captureBusy == busy)
            return;
        m_captureBusy = busy;
        Q_EMIT captureBusyChanged();
    }

Q_SIGNALS:
    void captureBusyChanged();

private:
    bool m_captureBusy = false;
};
