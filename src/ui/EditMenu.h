#pragma once

#include "ui/EditCommand.h"

#include <QObject>

#include <optional>

class EditTarget;
class QKeyEvent;
class QMenu;
class QWidget;

// The edit menu ("Bearbeiten") for a desktop without a global menu bar. Installed on the
// application, it watches every text field, also those a page adds later: a right click opens
// the six German commands instead of Qt's English menu, and the commands' keys work in the
// field even where Qt's platform bindings leave one out (Ctrl+Y redoes only on Windows there).
class EditMenu : public QObject
{
    Q_OBJECT
public:
    explicit EditMenu(QObject* parent = nullptr);
    ~EditMenu() override;

    // Starts and stops watching the whole application.
    void install();
    void uninstall();

    // The menu for one field: every command, enabled only where it applies. The menu belongs
    // to `field`, so it wears the panel's style and dies with the field.
    static QMenu* menuFor(const EditTarget& field);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // The command that `event` asks for and that Qt's own bindings would not run.
    static std::optional<EditCommand> missingBinding(const QKeyEvent& event);

    bool m_installed = false;
};
