#include "X11ReadTest.h"

#include "OwnerProcess.h"
#include "TestSupport.h"

#include "platform/linux/LinuxPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>
#include <QThread>
#include <QTimer>

using namespace std::chrono_literals;

namespace {

constexpr int answerTimeout = 10000;

QString textOf(const Pasteboard& pasteboard)
{
    return pasteboard.string().value_or(QStringLiteral("<nichts>"));
}

} // namespace

// Reading other applications' clipboards on the real X server: owners that answer well, in
// unusual formats, in pieces, or not at all (X11Owner children).
class X11ReadTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        enterTestMode();
        if (QGuiApplication::platformName() != QLatin1String("xcb"))
            QSKIP("needs an X display (run under Xvfb)");
    }

    void hungOwnerLeavesTheMainThreadFree()
    {
        LinuxPasteboard pasteboard(QGuiApplication::clipboard());
        QVERIFY(watching(pasteboard));
        OwnerProcess hung("hung");
        QSignalSpy pending(&pasteboard, &LinuxPasteboard::contentPending);
        QSignalSpy unreadable(&pasteboard, &Pasteboard::unreadable);
        const qint64 before = pasteboard.changeCount();
        QVERIFY(hung.take(QStringLiteral("hängt")));
        QVERIFY(pending.wait(answerTimeout));

        // The owner is being asked now and will not answer. Whatever this thread is given from
        // here on runs while the question is open, and finds the old content.
        QStringList order;
        QObject context;
        connect(&pasteboard, &Pasteboard::unreadable, &context,
                [&] { order.append(QStringLiteral("aufgegeben")); });
        QMetaObject::invokeMethod(
            &context,
            [&] {
                order.append(pasteboard.changeCount() == before ? QStringLiteral("Aufruf, alter Inhalt")
                                                                : QStringLiteral("Aufruf, schon neu"));
            },
            Qt::QueuedConnection);
        QTimer::singleShot(0, &context, [&] { order.append(QStringLiteral("Zeitgeber")); });
        QVERIFY(unreadable.wait(answerTimeout));
        QCOMPARE(order.size(), 3);
        QVERIFY2(order.indexOf(QStringLiteral("aufgegeben")) == 2, qPrintable(order.join(u", ")));
        QVERIFY2(order.contains(QStringLiteral("Aufruf, alter Inhalt")), qPrintable(order.join(u", ")));

        // Given up: a change without text; the owner was asked for its targets only.
        QCOMPARE(pasteboard.changeCount(), before + 1);
        QCOMPARE(pasteboard.string(), std::nullopt);
        QCOMPARE(pasteboard.types(), QStringList());
        QCOMPARE(hung.requests(), QList<QByteArray>{"TARGETS"});

        // The next good copy comes through while the hung owner still runs.
        const QString next = QStringLiteral("Nach dem Hänger");
        QProcess xclip;
        xclip.start(QStringLiteral("xclip"),
                    {QStringLiteral("-quiet"), QStringLiteral("-selection"), QStringLiteral("clipboard")});
        xclip.write(next.toUtf8());
        xclip.closeWriteChannel();
        QTRY_COMPARE_WITH_TIMEOUT(textOf(pasteboard), next, answerTimeout);
        QCOMPARE(pasteboard.changeCount(), before + 2);
        QCOMPARE(unreadable.size(), 1);
        QGuiApplication::clipboard()->setText(QStringLiteral("Ende"));
        xclip.waitForFinished();
    }

    void ownerThatOnlyListsItsTargetsIsGivenUp()
    {
        LinuxPasteboard pasteboard(QGuiApplication::clipboard());
        QVERIFY(watching(pasteboard));
        OwnerProcess owner("targets-only");
        QSignalSpy unreadable(&pasteboard, &Pasteboard::unreadable);
        QVERIFY(owner.take(QStringLiteral("nur die Liste")));
        QVERIFY(unreadable.wait(answerTimeout));
        // The targets it named are known; the text never came.
        QVERIFY(pasteboard.types().contains(QStringLiteral("text/plain")));
        QCOMPARE(pasteboard.string(), std::nullopt);
        QCOMPARE(owner.requests(), (QList<QByteArray>{"TARGETS", "UTF8_STRING"}));
    }

    void retakingHungOwnerDoesNotPileUpReads()
    {
        // Long time-outs and quick re-takes: every read is overtaken long before it could give up.
        LinuxPasteboard pasteboard(QGuiApplication::clipboard(), 3000ms);
        QVERIFY(watching(pasteboard));
        OwnerProcess hung("hung");
        QSignalSpy pending(&pasteboard, &LinuxPasteboard::contentPending);
        QSignalSpy changed(&pasteboard, &Pasteboard::changed);
        QSignalSpy unreadable(&pasteboard, &Pasteboard::unreadable);
        const int takes = 12;
        for (int i = 0; i < takes; ++i) {
            QVERIFY(hung.take(QStringLiteral("Nummer %1").arg(i)));
            QTest::qWait(50);
        }
        QVERIFY(unreadable.wait(answerTimeout));
        QTRY_COMPARE_WITH_TIMEOUT(pending.size(), takes, answerTimeout);
        // Only the last read ran to its end; each earlier one was dropped, window and all, before
        // the next question reached the owner.
        QCOMPARE(unreadable.size(), 1);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(hung.mostAlive(), 1);
        const QList<QByteArray> asked = hung.requests();
        QVERIFY(!asked.isEmpty() && asked.size() <= takes);
        QCOMPARE(asked.count("TARGETS"), asked.size());
    }

    void textTargets_data()
    {
        QTest::addColumn<QByteArray>("mode");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("type");
        QTest::newRow("UTF8_STRING") << QByteArray("good") << QStringLiteral("Grüße ✓ in UTF-8")
                                     << QStringLiteral("text/plain");
        QTest::newRow("only text/plain;charset=utf-8")
            << QByteArray("utf8-mime") << QStringLiteral("Nur als MIME-Typ: Grüße ✓")
            << QStringLiteral("text/plain;charset=utf-8");
        QTest::newRow("only STRING, Latin-1")
            << QByteArray("latin1") << QStringLiteral("Grüße aus Köln, 5 °C") << QStringLiteral("text/plain");
        QTest::newRow("in pieces") << QByteArray("pieces")
                                   << QStringLiteral("Stück für Stück ✓ ").repeated(2000)
                                   << QStringLiteral("text/plain");
    }
    void textTargets()
    {
        QFETCH(QByteArray, mode);
        QFETCH(QString, text);
        QFETCH(QString, type);
        LinuxPasteboard pasteboard(QGuiApplication::clipboard());
        QVERIFY(watching(pasteboard));
        OwnerProcess owner(mode);
        QSignalSpy changed(&pasteboard, &Pasteboard::changed);
        QVERIFY(owner.take(text));
        QVERIFY(changed.wait(answerTimeout));
        QCOMPARE(pasteboard.string(), std::optional<QString>(text));
        QVERIFY2(pasteboard.types().contains(type), qPrintable(pasteboard.types().join(u", ")));
    }

    void largestText_data()
    {
        QTest::addColumn<QByteArray>("mode");
        QTest::addColumn<qsizetype>("bytes");
        QTest::addColumn<bool>("read");
        // One byte more than the history keeps is still read (a trailing NUL is common), so the
        // history decides; anything larger is refused before it is transferred.
        QTest::newRow("in one piece, 100,000") << QByteArray("good") << qsizetype(100'000) << true;
        QTest::newRow("in one piece, 100,001") << QByteArray("good") << qsizetype(100'001) << false;
        QTest::newRow("in pieces, 100,000") << QByteArray("pieces") << qsizetype(100'000) << true;
        QTest::newRow("in pieces, 100,001") << QByteArray("pieces") << qsizetype(100'001) << false;
        // The size announced for pieces is only a lower bound.
        QTest::newRow("in pieces announced as 0, 100,000")
            << QByteArray("pieces-lowball") << qsizetype(100'000) << true;
        QTest::newRow("in pieces announced as 0, 100,001")
            << QByteArray("pieces-lowball") << qsizetype(100'001) << false;
        QTest::newRow("in pieces, 5 MB") << QByteArray("pieces") << qsizetype(5'000'000) << false;
    }
    void largestText()
    {
        QFETCH(QByteArray, mode);
        QFETCH(qsizetype, bytes);
        QFETCH(bool, read);
        LinuxPasteboard pasteboard(QGuiApplication::clipboard());
        QVERIFY(watching(pasteboard));
        OwnerProcess owner(mode);
        QSignalSpy changed(&pasteboard, &Pasteboard::changed);
        QSignalSpy unreadable(&pasteboard, &Pasteboard::unreadable);
        QVERIFY(owner.fill(bytes));
        QVERIFY(changed.wait(answerTimeout));
        QCOMPARE(pasteboard.string().has_value(), read);
        if (read)
            QCOMPARE(pasteboard.string()->size(), bytes);
        QCOMPARE(unreadable.size(), 0);
    }

    void overtakenAnswerIsDropped()
    {
        LinuxPasteboard pasteboard(QGuiApplication::clipboard());
        QVERIFY(watching(pasteboard));
        OwnerProcess first("good");
        OwnerProcess second("good");
        QSignalSpy changed(&pasteboard, &Pasteboard::changed);
        const qint64 before = pasteboard.changeCount();

        // This thread looks away while both copies are read: the first answer waits in the queue
        // until the second change has overtaken it.
        QVERIFY(first.take(QStringLiteral("Erste Kopie")));
        QVERIFY(first.waitForRequest("UTF8_STRING"));
        QThread::msleep(500);
        QVERIFY(second.take(QStringLiteral("Zweite Kopie")));
        QVERIFY(second.waitForRequest("UTF8_STRING"));
        QThread::msleep(500);

        QTRY_COMPARE_WITH_TIMEOUT(textOf(pasteboard), QStringLiteral("Zweite Kopie"), answerTimeout);
        QCOMPARE(pasteboard.overtakenAnswers(), 1);
        QCOMPARE(pasteboard.changeCount(), before + 1);
        QCOMPARE(changed.size(), 1);
    }

    void answerForContentWeReplacedIsDropped()
    {
        // Time-outs longer than the slow owner takes to answer.
        LinuxPasteboard pasteboard(QGuiApplication::clipboard(), 3000ms);
        QVERIFY(watching(pasteboard));
        OwnerProcess other("slow");
        const qint64 before = pasteboard.changeCount();
        // Qt may take the clipboard only with a time no older than the other copy, and learns the
        // time from the X server's report of that copy; the slow owner's text comes later.
        QSignalSpy qtSaw(QGuiApplication::clipboard(), &QClipboard::changed);
        QVERIFY(other.take(QStringLiteral("Fremde Kopie")));
        QVERIFY(qtSaw.wait(answerTimeout));
        QVERIFY(other.waitForRequest("UTF8_STRING"));
        QCOMPARE(pasteboard.changeCount(), before);
        // This thread looks away until the answer is on its way here.
        QThread::msleep(1500);
        // Our write comes after the other copy; its answer, already on the way, is older.
        pasteboard.clearAndWriteString(QStringLiteral("Unsere Kopie"));
        QVERIFY(QGuiApplication::clipboard()->ownsClipboard());
        QCOMPARE(pasteboard.changeCount(), before + 1);

        // A later outside copy shows that everything before it has been handled.
        QVERIFY(other.take(QStringLiteral("Spätere Kopie")));
        QTRY_COMPARE_WITH_TIMEOUT(textOf(pasteboard), QStringLiteral("Spätere Kopie"), answerTimeout);
        QCOMPARE(pasteboard.changeCount(), before + 2);
        QCOMPARE(pasteboard.overtakenAnswers(), 1);
    }

    void ownerLeavingEmptiesTheContent()
    {
        LinuxPasteboard pasteboard(QGuiApplication::clipboard());
        QVERIFY(watching(pasteboard));
        OwnerProcess owner("good");
        QVERIFY(owner.take(QStringLiteral("Gleich weg")));
        QTRY_COMPARE_WITH_TIMEOUT(textOf(pasteboard), QStringLiteral("Gleich weg"), answerTimeout);
        const qint64 count = pasteboard.changeCount();
        owner.quit();
        QTRY_COMPARE_WITH_TIMEOUT(pasteboard.changeCount(), count + 1, answerTimeout);
        QCOMPARE(pasteboard.string(), std::nullopt);
        QCOMPARE(pasteboard.types(), QStringList());
    }

    void contentBeforeTheStartIsReadButNoChange()
    {
        OwnerProcess owner("good");
        QVERIFY(owner.take(QStringLiteral("Schon da")));
        LinuxPasteboard pasteboard(QGuiApplication::clipboard());
        QVERIFY(watching(pasteboard));
        QVERIFY(owner.waitForRequest("UTF8_STRING"));
        QTRY_COMPARE_WITH_TIMEOUT(textOf(pasteboard), QStringLiteral("Schon da"), answerTimeout);
        QCOMPARE(pasteboard.changeCount(), 0);
    }

private:
    // The reading thread has subscribed to owner changes.
    static bool watching(LinuxPasteboard& pasteboard)
    {
        QSignalSpy started(&pasteboard, &LinuxPasteboard::watching);
        return started.wait(answerTimeout);
    }
};

int runX11ReadTests(int argc, char** argv)
{
    X11ReadTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "X11ReadTest.moc"
