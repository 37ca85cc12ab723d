#pragma once

#include "platform/LoginItems.h"

#include <QObject>
#include <QString>

class Defaults;

// Start at login: the desktop's state of this program's autostart entry, the switch that changes
// it, and the first-launch rule that switches it on once ("loginItem.configured.v1").
class LoginItemStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(LoginItemStatus status READ status NOTIFY statusChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(bool enabled READ enabled NOTIFY statusChanged)
public:
    static constexpr const char* configuredKey = "loginItem.configured.v1";

    LoginItemStore(LoginItems& loginItems, Defaults& defaults, QObject* parent = nullptr);

    LoginItemStatus status() const { return m_status; }
    const QString& errorMessage() const { return m_errorMessage; }
    // Registered counts as on, also while the desktop still holds it back.
    bool enabled() const;

    // Reads the status from the desktop again.
    void refresh();
    // At launch: puts the program into the desktop's launcher and, until a change has succeeded
    // once, switches start at login on.
    void configureInitialLaunch();
    void setEnabled(bool on);

Q_SIGNALS:
    void statusChanged();
    void errorMessageChanged();

private:
    void setErrorMessage(const QString& message);

    LoginItems& m_loginItems;
    Defaults& m_defaults;
    LoginItemStatus m_status;
    QString m_errorMessage;
};
