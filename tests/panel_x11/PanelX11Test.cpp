#include "TestSupport.h"

#include "app/AppDelegate.h"
#include "app/NotchPanel.h"
#include "platform/linux/FileAndFolderDialog.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/X11Support.h"
#include "platform/linux/X11WindowHints.h"
#include "productivity/Productivity.h"
#include "productivity/widgets/WorkspaceEditor.h"
#include "productivity/widgets/WorkspacesPage.h"
#include "settings/Preferences.h"
#include "setup/OnboardingState.h"
#include "setup/PermissionStore.h"
#include "setup/widgets/OnboardingPane.h"
#include "setup/widgets/OnboardingStepView.h"
#include "shell/HistoryHotKey.h"
#include "shell/widgets/FullLayout.h"
#include "shell/widgets/RootView.h"
#include "shell/widgets/StatusLineView.h"
#include "shell/widgets/TabBar.h"
#include "ui/SymbolButton.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include <xcb/xcb.h>

#include <cstdlib>

namespace {

const QRect closedFrame(880, 0, 160, 24);

// xdotool is the outside user: it moves the real pointer and types on the real keyboard.
QByteArray xdotool(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), arguments);
    process.waitForFinished(10000);
    return process.readAllStandardOutput().trimmed();
}

void moveTo(int x, int y)
{
    xdotool({QStringLiteral("mousemove"), QString::number(x), QString::number(y)});
}

// The panel's frame as the X server has it, found by its title the way the bars find it.
QRect serverFrame()
{
    const QByteArray ids =
        xdotool({QStringLiteral("search"), QStringLiteral("--name"), QStringLiteral("^Brenlow$")});
    for (const QByteArray& id : ids.split('\n')) {
        const QString geometry =
            QString::fromUtf8(xdotool({QStringLiteral("getwindowgeometry"), QString::fromLatin1(id)}));
        const auto match =
            QRegularExpression(QStringLiteral("Position: (-?\\d+),(-?\\d+).*Geometry: (\\d+)x(\\d+)"),
                               QRegularExpression::DotMatchesEverythingOption)
                .match(geometry);
        if (match.hasMatch() && match.captured(3).toInt() > 1)
            return QRect(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt(),
                         match.captured(4).toInt());
    }
    return {};
}

// A real click at the middle of a widget, wherever it sits on the screen.
void click(const QWidget* widget)
{
    const QPoint centre = widget->mapToGlobal(widget->rect().center());
    xdotool({QStringLiteral("mousemove"), QString::number(centre.x()), QString::number(centre.y()),
             QStringLiteral("click"), QStringLiteral("1")});
}

void type(const QString& text)
{
    xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("5"), text});
}

void key(const QString& name)
{
    xdotool({QStringLiteral("key"), name});
}

QStringList labelTexts(const QWidget* widget)
{
    QStringList texts;
    for (const QLabel* label : widget->findChildren<QLabel*>())
        texts.append(label->text());
    return texts;
}

// Leaves the session's accessibility bus as the tests found it: off.
void switchAccessibilityOff()
{
    QDBusMessage set = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"));
    set << QStringLiteral("org.a11y.Status") << QStringLiteral("IsEnabled")
        << QVariant::fromValue(QDBusVariant(false));
    QDBusConnection::sessionBus().call(set, QDBus::Block, 2000);
}

// Whether `upper` is stacked above `lower` on the X server: the root's children come bottom first.
bool stackedAbove(quint32 upper, quint32 lower)
{
    xcb_connection_t* c = X11Support::connection();
    xcb_query_tree_reply_t* tree =
        xcb_query_tree_reply(c, xcb_query_tree(c, X11Support::rootWindow()), nullptr);
    if (!tree)
        return false;
    const xcb_window_t* children = xcb_query_tree_children(tree);
    int upperAt = -1;
    int lowerAt = -1;
    for (int i = 0; i < xcb_query_tree_children_length(tree); ++i) {
        if (children[i] == upper)
            upperAt = i;
        if (children[i] == lower)
            lowerAt = i;
    }
    std::free(tree);
    return upperAt > lowerAt && lowerAt >= 0;
}

} // namespace

// The real panel window on the X display, driven by a real pointer and keyboard.
class PanelX11Test : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<LinuxPlatform> m_linux;
    std::unique_ptr<ScratchDomain> m_domain;
    std::unique_ptr<AppDelegate> m_delegate;
    std::unique_ptr<QWidget> m_editor;

    Model& model() { return m_delegate->model(); }
    NotchPanel& panel() { return *m_delegate->panel(); }

    void launch()
    {
        moveTo(300, 800);
        m_linux = std::make_unique<LinuxPlatform>();
        m_domain = std::make_unique<ScratchDomain>();
        m_domain->defaults->setBool(QStringLiteral("welcome.completed"), true);
        m_delegate = std::make_unique<AppDelegate>(*m_domain->defaults, m_linux->platform());
        m_delegate->launch();
        QTRY_COMPARE(serverFrame(), closedFrame);
    }

    // Another application's window that the user is typing in.
    void focusEditor()
    {
        m_editor = std::make_unique<QWidget>();
        m_editor->setWindowTitle(QStringLiteral("Editor"));
        m_editor->setGeometry(200, 400, 400, 300);
        m_editor->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_editor.get()));
        m_editor->activateWindow();
        QTRY_COMPARE(X11WindowHints::focusedWindow(), quint32(m_editor->winId()));
    }

    void hoverOpen()
    {
        moveTo(960, 5);
        QTRY_VERIFY(model().expanded());
        QTRY_COMPARE(serverFrame(), QRect(650, 0, 620, 378));
    }

    RootView& root() { return *panel().findChild<RootView*>(); }

    // Waits until the opening animation is over, so a click lands where the widget is drawn.
    bool frameSettled()
    {
        QDeadlineTimer deadline(5000);
        QRect last = serverFrame();
        while (!deadline.hasExpired()) {
            QTest::qWait(150);
            const QRect now = serverFrame();
            if (now == last && now == panel().geometry())
                return true;
            last = now;
        }
        return false;
    }

    // The file dialog the panel opened, once it is on the screen; nullptr when none came.
    static FileAndFolderDialog* openDialog()
    {
        QDeadlineTimer deadline(5000);
        while (!deadline.hasExpired()) {
            auto* dialog = qobject_cast<FileAndFolderDialog*>(QApplication::activeModalWidget());
            if (dialog && dialog->isVisible())
                return dialog;
            QTest::qWait(20);
        }
        return nullptr;
    }

private Q_SLOTS:
    void initTestCase()
    {
        enterTestMode();
        QVERIFY2(X11Support::connection(), "needs an X display");
        QVERIFY2(!xdotool({QStringLiteral("version")}).isEmpty(), "needs xdotool");
    }

    void init() { launch(); }

    void cleanup()
    {
        m_delegate->terminate();
        m_delegate.reset();
        m_editor.reset();
        m_domain.reset();
        m_linux.reset();
    }

    void theClosedPanelCoversTheNotch()
    {
        QCOMPARE(panel().geometry(), closedFrame);
        QVERIFY(panel().isVisible());
        QCOMPARE(model().notchWidth(), 160.0);
    }

    void hoverOpensWithoutTakingTheKeyboardAndLeavingCloses()
    {
        focusEditor();
        hoverOpen();
        QVERIFY(!panel().isKey());
        QCOMPARE(X11WindowHints::focusedWindow(), quint32(m_editor->winId()));

        moveTo(300, 800);
        // Closing early would be the fault; a slow machine only closes later.
        QTest::qWait(250);
        QVERIFY(model().expanded());
        QTRY_VERIFY(!model().expanded());
        QTRY_COMPARE(serverFrame(), closedFrame);
        QCOMPARE(X11WindowHints::focusedWindow(), quint32(m_editor->winId()));
    }

    void theMarginBelowTheNotchOpensItToo()
    {
        // Below the closed window, over the desktop: only the root window sees this movement.
        QTest::qWait(300);
        moveTo(960, 29);
        QTRY_VERIFY(model().expanded());
    }

    void escapeKeepsItClosedUntilThePointerLeaves()
    {
        focusEditor();
        hoverOpen();
        // What a click into the panel does: it takes the keyboard.
        panel().makeKey();
        QTRY_VERIFY(panel().isKey());
        xdotool({QStringLiteral("key"), QStringLiteral("Escape")});
        QTRY_VERIFY(!model().expanded());
        // The keyboard goes back to the editor.
        QTRY_COMPARE(X11WindowHints::focusedWindow(), quint32(m_editor->winId()));
        QTest::qWait(700);
        QVERIFY(!model().expanded());
        QCOMPARE(serverFrame(), closedFrame);
        moveTo(960, 200);
        QTest::qWait(100);
        moveTo(960, 5);
        QTRY_VERIFY(model().expanded());
    }

    void aPinnedPanelStaysOpen()
    {
        hoverOpen();
        model().setPanelPinned(true);
        moveTo(300, 800);
        QTest::qWait(1200);
        QVERIFY(model().expanded());
        QCOMPARE(serverFrame(), QRect(650, 0, 620, 378));
        m_delegate->collapse();
        QVERIFY(!model().panelPinned());
    }

    void theGlobalShortcutOpensTheHistoryWithTheKeyboard()
    {
        focusEditor();
        QCOMPARE(model().hotkeyStatus(), HistoryHotKey::activeText(HistoryShortcut::controlV));
        xdotool({QStringLiteral("key"), QStringLiteral("super+v")});
        QTRY_VERIFY(model().expanded());
        QCOMPARE(model().page(), Page::clipboard);
        QTRY_VERIFY(panel().isKey());
        QTRY_COMPARE(serverFrame(), QRect(650, 0, 620, 466));

        // With NumLock and CapsLock on the shortcut still works.
        m_delegate->collapse();
        xdotool({QStringLiteral("key"), QStringLiteral("Num_Lock"), QStringLiteral("Caps_Lock")});
        xdotool({QStringLiteral("key"), QStringLiteral("super+v")});
        xdotool({QStringLiteral("key"), QStringLiteral("Num_Lock"), QStringLiteral("Caps_Lock")});
        QTRY_VERIFY(model().expanded());
    }

    void aCombinationHeldElsewhereIsReportedTaken()
    {
        // Another client holds Alt-V (with and without the lock keys, like we would).
        xcb_connection_t* other = xcb_connect(nullptr, nullptr);
        QVERIFY(!xcb_connection_has_error(other));
        const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(other)).data;
        xcb_keycode_t keycode = 0;
        {
            const xcb_setup_t* setup = xcb_get_setup(other);
            auto* mapping = xcb_get_keyboard_mapping_reply(
                other,
                xcb_get_keyboard_mapping(other, setup->min_keycode,
                                         setup->max_keycode - setup->min_keycode + 1),
                nullptr);
            const xcb_keysym_t* syms = xcb_get_keyboard_mapping_keysyms(mapping);
            for (int i = 0; i < xcb_get_keyboard_mapping_keysyms_length(mapping) && !keycode; ++i) {
                if (syms[i] == 0x76)
                    keycode = xcb_keycode_t(setup->min_keycode + i / mapping->keysyms_per_keycode);
            }
            std::free(mapping);
        }
        QVERIFY(keycode);
        xcb_grab_key(other, 1, screen->root, XCB_MOD_MASK_1, keycode, XCB_GRAB_MODE_ASYNC,
                     XCB_GRAB_MODE_ASYNC);
        std::free(xcb_get_input_focus_reply(other, xcb_get_input_focus(other), nullptr));

        model().preferences().update([](PreferenceValues& v) { v.shortcut = HistoryShortcut::optionV; });
        QCOMPARE(model().hotkeyStatus(),
                 QStringLiteral("⌥ V ist bereits belegt. Bitte eine andere Kombination wählen."));
        xcb_disconnect(other);

        model().preferences().update(
            [](PreferenceValues& v) { v.shortcut = HistoryShortcut::controlShiftV; });
        QCOMPARE(model().hotkeyStatus(),
                 QStringLiteral("⌃ ⇧ V ist aktiv. Eintrag wählen, dann mit ⌘ V einfügen."));
        xdotool({QStringLiteral("key"), QStringLiteral("super+shift+v")});
        QTRY_VERIFY(model().expanded());
        QCOMPARE(model().page(), Page::clipboard);
    }

    void aWorkspaceIsChosenSavedAndStartedOnTheRealPanel_data()
    {
        QTest::addColumn<PanelLayout>("layout");
        QTest::addColumn<QRect>("frame");
        QTest::newRow("balanced") << PanelLayout::balanced << QRect(650, 0, 620, 466);
        QTest::newRow("wide") << PanelLayout::wide << QRect(560, 0, 800, 426);
        QTest::newRow("tall") << PanelLayout::tall << QRect(700, 0, 520, 556);
    }

    void aWorkspaceIsChosenSavedAndStartedOnTheRealPanel()
    {
        QFETCH(PanelLayout, layout);
        QFETCH(QRect, frame);
        model().preferences().update([layout](PreferenceValues& v) { v.layout = layout; });
        QTemporaryDir folder;
        const QString project = folder.filePath(QStringLiteral("Projekt"));
        const QString notes = folder.filePath(QStringLiteral("Notizen"));
        QVERIFY(QDir().mkpath(project) && QDir().mkpath(notes));

        moveTo(960, 5);
        QTRY_VERIFY(model().expanded());
        QVERIFY(frameSettled());
        click(root().fullLayout()->tabBar()->tab(Page::workspaces));
        QTRY_COMPARE(model().page(), Page::workspaces);
        QTRY_COMPARE(serverFrame(), frame);
        auto* page = qobject_cast<WorkspacesPage*>(root().fullLayout()->currentPage());
        QVERIFY(page);
        WorkspaceEditor& editor = *page->editor();
        QVERIFY(
            frame.contains(editor.chooseButton()->mapToGlobal(editor.chooseButton()->rect().bottomRight())));

        click(editor.nameField());
        QTRY_VERIFY(panel().isKey());
        type(QStringLiteral("Entwicklung"));
        QTRY_COMPARE(model().productivity().workspaceDraft(), QStringLiteral("Entwicklung"));

        // Cancelled with Escape: nothing chosen, the panel is free again.
        click(editor.chooseButton());
        FileAndFolderDialog* dialog = openDialog();
        QVERIFY(dialog);
        QCOMPARE(model().interactionLocks(), qint64(1));
        QTRY_VERIFY(dialog->isActiveWindow());
        key(QStringLiteral("Escape"));
        QTRY_COMPARE(model().interactionLocks(), qint64(0));
        QVERIFY(model().productivity().workspacePaths().isEmpty());
        QVERIFY(model().expanded());

        click(editor.chooseButton());
        dialog = openDialog();
        QVERIFY(dialog);
        QCOMPARE(dialog->directory().absolutePath(), QStringLiteral("/usr/share/applications"));
        // Above the always-on-top panel, not hidden under it.
        QTRY_VERIFY(stackedAbove(quint32(dialog->winId()), quint32(panel().winId())));
        // The pointer leaves the panel for the dialog: the panel waits for the dialog.
        moveTo(60, 1060);
        QTest::qWait(1200);
        QVERIFY(model().expanded());
        QCOMPARE(serverFrame(), frame);
        // Back over the panel (clear of the dialog) before the dialog ends, so it stays open after.
        moveTo(frame.left() + 10, 60);
        QTRY_VERIFY(dialog->isActiveWindow());
        click(dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")));
        moveTo(frame.left() + 10, 60);
        type(QStringLiteral("\"%1\" \"%2/\"").arg(project, notes));
        key(QStringLiteral("Return"));
        QTRY_COMPARE(model().interactionLocks(), qint64(0));
        QTRY_COMPARE(editor.countText(), QStringLiteral("2 Elemente ausgewählt"));
        QVERIFY(model().expanded());

        click(editor.saveButton());
        QTRY_COMPARE(model().productivity().presets().size(), 1);
        QCOMPARE(model().productivity().presets().first().paths, (QStringList{project, notes}));
        QTRY_COMPARE(page->presetNames(), QStringList{QStringLiteral("Entwicklung")});

        // The folders moved away since: starting says which did not open.
        QVERIFY(QDir(project).removeRecursively() && QDir(notes).removeRecursively());
        QPushButton* start = page->rowButton(0, QStringLiteral("Starten"));
        QVERIFY(start);
        // The new row is laid out with the next pass.
        QTRY_VERIFY(start->isVisible() && start->width() > 20);
        QTest::qWait(100);
        click(start);
        QTRY_COMPARE(root().fullLayout()->statusLine()->text(),
                     QStringLiteral("Nicht geöffnet: Projekt, Notizen"));

        click(page->rowButton(0, QStringLiteral("Entfernen")));
        QTRY_VERIFY(model().productivity().presets().isEmpty());
        moveTo(300, 800);
        QTRY_VERIFY(!model().expanded());
    }

    void theTourButtonsAnswerOnTheRealPanel()
    {
        model().onboarding().begin(true);
        model().onboarding().setStep(4);
        m_delegate->expand(std::nullopt, false);
        QTRY_COMPARE(serverFrame(), QRect(640, 0, 640, 528));
        auto* pane = qobject_cast<OnboardingPane*>(root().onboardingPane());
        QVERIFY(pane && pane->isVisible());

        // Any X11 display lets a client read the screen.
        click(pane->stepView()->button(QStringLiteral("Freigabe anfragen")));
        QTRY_COMPARE(pane->messageText(), QStringLiteral("Bildschirmaufnahme freigegeben"));
        QVERIFY(labelTexts(pane->stepView()).contains(QStringLiteral("Bildschirmaufnahme freigegeben")));

        // The check runs on its worker against the real session bus and comes back.
        QTRY_VERIFY(!model().permissions().checking());
        click(pane->stepView()->button(QStringLiteral("Status erneut prüfen")));
        QTRY_VERIFY(model().permissions().checkedAt().has_value());
        QTRY_VERIFY(!model().permissions().checking());
        QCOMPARE(pane->stepView()->button(QStringLiteral("Status erneut prüfen"))->isEnabled(), true);

        // Trust: the desktop's accessibility bus answers, and the tour says what it answered.
        click(pane->backButton());
        click(pane->backButton());
        click(pane->backButton());
        QTRY_COMPARE(model().onboarding().step(), 1);
        model().setMessage(QString());
        click(pane->stepView()->button(QStringLiteral("Berechtigung öffnen")));
        QTRY_VERIFY(!pane->messageText().isEmpty());
        if (model().permissions().accessibility()) {
            QCOMPARE(pane->messageText(), QStringLiteral("Bedienungshilfen freigegeben"));
            QTRY_VERIFY(
                labelTexts(pane->stepView()).contains(QStringLiteral("Bedienungshilfen freigegeben")));
            switchAccessibilityOff();
        } else {
            QCOMPARE(
                pane->messageText(),
                QStringLiteral("Systemeinstellungen → Datenschutz & Sicherheit → Bedienungshilfen öffnen."));
        }
    }

    void holdingCtrlShowsTheCommandsAndReleasingHidesThem()
    {
        focusEditor();
        xdotool({QStringLiteral("keydown"), QStringLiteral("ctrl")});
        QTRY_VERIFY(model().expanded());
        QCOMPARE(model().page(), Page::commands);
        xdotool({QStringLiteral("keyup"), QStringLiteral("ctrl")});
        QTRY_VERIFY(!model().expanded());

        // Ctrl with another key is a shortcut, not a hold.
        xdotool({QStringLiteral("keydown"), QStringLiteral("ctrl")});
        xdotool({QStringLiteral("key"), QStringLiteral("c")});
        QTest::qWait(1200);
        xdotool({QStringLiteral("keyup"), QStringLiteral("ctrl")});
        QVERIFY(!model().expanded());
    }
};

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication app(argc, argv);
    PanelX11Test test;
    return QTest::qExec(&test, argc, argv);
}

#include "PanelX11Test.moc"
