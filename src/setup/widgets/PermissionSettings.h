#pragma once

#include <QWidget>

class PermissionStore;
class QLabel;
class QPushButton;

// "Verbindungen": accessibility, screen capture and the players' automation as the permission
// store knows them, with the ways to repair access. Showing the rows checks again.
class PermissionSettings : public QWidget
{
    Q_OBJECT
public:
    explicit PermissionSettings(const PermissionStore& permissions, QWidget* parent = nullptr);

    QString accessibilityText() const;
    QString screenCaptureText() const;
    QString spotifyText() const;
    QString musicText() const;
    QPushButton* allowButton() const { return m_allow; }
    QPushButton* recheckButton() const { return m_recheck; }
    QPushButton* restartButton() const { return m_restart; }

Q_SIGNALS:
    void accessibilityRequested();
    void recheckRequested();
    void restartRequested();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void sync();

    const PermissionStore& m_permissions;
    QLabel* m_accessibility;
    QPushButton* m_allow;
    QLabel* m_screenCapture;
    QLabel* m_spotify;
    QLabel* m_music;
    QPushButton* m_recheck;
    QWidget* m_restartNote;
    QPushButton* m_restart;
};
