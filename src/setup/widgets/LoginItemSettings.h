#pragma once

#include <QWidget>

class LoginItemStore;
class QLabel;
class QPushButton;
class ToggleRow;

// "Verbindungen": the start-at-login switch with the desktop's status, the last failure and the
// way to the desktop's own autostart page. The status is read again each time the row shows.
class LoginItemSettings : public QWidget
{
    Q_OBJECT
public:
    explicit LoginItemSettings(LoginItemStore& store, QWidget* parent = nullptr);

    ToggleRow* toggleRow() const { return m_toggle; }
    QString statusText() const;
    QString errorText() const;
    QPushButton* settingsButton() const { return m_settings; }

Q_SIGNALS:
    void openSettingsRequested();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void sync();

    LoginItemStore& m_store;
    ToggleRow* m_toggle;
    QLabel* m_status;
    QLabel* m_error;
    QPushButton* m_settings;
};
