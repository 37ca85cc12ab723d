#include "ClipboardTests.h"
#include "TestSupport.h"

#include "ui/EditMenu.h"
#include "ui/EditTarget.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QTest>
#include <QTextEdit>

#include <memory>

namespace {

QList<bool> enabledStates(const QMenu& menu)
{
    QList<bool> states;
    for (const QAction* action : menu.actions()) {
        if (!action->isSeparator())
            states << action->isEnabled();
    }
    return states;
}

QAction* actionFor(const QMenu& menu, EditCommand command)
{
    for (QAction* action : menu.actions()) {
        if (action->text().startsWith(EditCommands::title(command) + u'\t'))
            return action;
    }
    return nullptr;
}

} // namespace

// The edit menu's judgement of a rich text field, without a real display (the keys and the
// line edit are tried on the real window).
class EditMenuTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void aRichTextFieldOffersWhatApplies()
    {
        QApplication::clipboard()->setText(QString());
        QTextEdit edit;
        edit.setPlainText(QStringLiteral("Notiz"));
        const auto target = EditTarget::of(edit.viewport());
        QVERIFY(target);
        QCOMPARE(target->widget(), &edit);
        // Nothing typed, nothing selected, empty clipboard: only "Alles auswählen".
        std::unique_ptr<QMenu> menu(EditMenu::menuFor(*target));
        QCOMPARE(enabledStates(*menu), QList<bool>({false, false, false, false, false, true}));

        actionFor(*menu, EditCommand::selectAll)->trigger();
        QCOMPARE(edit.textCursor().selectedText(), QStringLiteral("Notiz"));
        menu.reset(EditMenu::menuFor(*target));
        QCOMPARE(enabledStates(*menu), QList<bool>({false, false, true, true, false, false}));
        actionFor(*menu, EditCommand::cut)->trigger();
        QCOMPARE(edit.toPlainText(), QString());
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("Notiz"));

        menu.reset(EditMenu::menuFor(*target));
        QCOMPARE(enabledStates(*menu), QList<bool>({true, false, false, false, true, false}));
        actionFor(*menu, EditCommand::undo)->trigger();
        QCOMPARE(edit.toPlainText(), QStringLiteral("Notiz"));

        // The field changed while the menu was open: the stale item does nothing.
        menu.reset(EditMenu::menuFor(*target));
        QVERIFY(actionFor(*menu, EditCommand::redo)->isEnabled());
        edit.setPlainText(QStringLiteral("neu gesetzt"));
        actionFor(*menu, EditCommand::redo)->trigger();
        QCOMPARE(edit.toPlainText(), QStringLiteral("neu gesetzt"));

        // Read-only: copying a selection is all there is.
        edit.setReadOnly(true);
        edit.selectAll();
        menu.reset(EditMenu::menuFor(*target));
        QCOMPARE(enabledStates(*menu), QList<bool>({false, false, false, true, false, false}));
        QVERIFY(!target->perform(EditCommand::cut));
        QCOMPARE(edit.toPlainText(), QStringLiteral("neu gesetzt"));
    }

    void onlyTextFieldsAreTargets()
    {
        QWidget plain;
        QLineEdit line(&plain);
        QTextEdit rich(&plain);
        QVERIFY(!EditTarget::of(&plain));
        QVERIFY(!EditTarget::of(nullptr));
        QVERIFY(!EditTarget::of(rich.verticalScrollBar()));
        QCOMPARE(EditTarget::of(&line)->widget(), &line);
        QCOMPARE(EditTarget::of(&rich)->widget(), &rich);
    }
};

int runEditMenuTests(int argc, char** argv)
{
    EditMenuTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "EditMenuTest.moc"
