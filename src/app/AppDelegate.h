#pragma once

#include "model/Page.h"
#include "platform/Platform.h"
#include "ui/EditMenu.h"

#include <QObject>
#include <QSet>

#include <memory>
#include <optional>

class Defaults;
class CoverPanel;
class Model;
class NotchPanel;
class PageRegistry;
class PanelController;
class TrackToast;

// Owns the model, the panel window and the input services for the life of the process.
//
// Where the desktop differs: an accessory application is a Qt::Tool window and an application
// that keeps running with no window open. X11 has no global menu bar: the quit item lives in the
// tray menu, and the edit menu ("Bearbeiten") is every text field's context menu and keys.
class AppDelegate : public QObject
{
    Q_OBJECT
public:
    static constexpr const char* statusSymbol = "rectangle.topthird.inset.filled";

    AppDelegate(Defaults& defaults, Platform platform, QObject* parent = nullptr);
    ~AppDelegate() override;

    Model& model() { return *m_model; }
    // Present after launch().
    NotchPanel* panel() const { return m_panel.get(); }
    PanelController* controller() const { return m_controller.get(); }
    TrackToast* trackToast() const { return m_trackToast.get(); }
    CoverPanel* coverPanel() const { return m_coverPanel.get(); }

    // Brings everything up in order; the closed panel ends over the notch.
    void launch();
    // Takes down what launch() installed; state was written when it changed.
    void terminate();
    // A second start of the program: opens the panel, not from hovering.
    void reopen();

    void expand(std::optional<Page> page, bool fromHover);
    void collapse();
    void toggle();
    void pollPointer();
    void reposition();
    void configureShortcut();
    void welcome(bool replay);

protected:
    // Counts our popup menus: the panel stays open while one is up.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void connectModel();
    void installKeyboardMonitor();
    void removeKeyboardMonitor();

    Platform m_platform;
    EditMenu m_editMenu;
    std::unique_ptr<Model> m_model;
    std::unique_ptr<PageRegistry> m_pages;
    std::unique_ptr<NotchPanel> m_panel;
    std::unique_ptr<PanelController> m_controller;
    std::unique_ptr<CoverPanel> m_coverPanel;
    std::unique_ptr<TrackToast> m_trackToast;
    QSet<QObject*> m_openMenus;
    bool m_launched = false;
};
