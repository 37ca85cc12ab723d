#include "TestSupport.h"

#include "app/AppDelegate.h"
#include "app/NotchPanel.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/X11Support.h"
#include "platform/linux/X11WindowHints.h"
#include "settings/Preferences.h"
#include "shell/HistoryHotKey.h"

#include <QApplication>
#include <QProcess>
#include <QRegularExpression>
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
