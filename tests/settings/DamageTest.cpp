#include "SettingsTests.h"
#include "TestSupport.h"

#include "productivity/Productivity.h"
#include "settings/Json.h"
#include "settings/Preferences.h"
#include "setup/OnboardingState.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace SettingsTestSupport;

namespace {

const QStringList userNotes = {u"Milch kaufen"_qs, u"Anruf bei Frau Weber um 15 Uhr"_qs,
                               u"Idee für den Vortrag"_qs};

// What a user stands to lose: notes, a pin, a half-typed draft, chosen settings, a finished tour.
void fillLikeAUser(Model& model)
{
    for (const QString& note : userNotes)
        model.productivity().addNote(note);
    model.productivity().togglePin(u"DE12 3456 7890"_qs);
    model.productivity().setNoteDraft(u"halb getippt"_qs);
    model.preferences().update([](PreferenceValues& values) {
        values.layout = PanelLayout::tall;
        values.focusMinutes = 50;
    });
    model.finishWelcome();
}

QStringList noteTexts(const Model& model)
{
    QStringList texts;
    for (const QuickNote& note : model.productivity().notes())
        texts.append(note.text);
    return texts;
}

QJsonObject note(const QString& text,
                 const QJsonValue& id = QJsonValue(u"6F9619FF-8B86-D011-B42D-00C04FC964FF"_qs))
{
    return {{u"id"_qs, id}, {u"text"_qs, text}, {u"date"_qs, 700'000'000.0}};
}

} // namespace

// Stored data that cannot be read reads as empty, yet every byte of it stays on disk beside the
// domain and the user is told where.
class DamageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }

    void aDamagedFileIsKeptBesideTheNewOne_data()
    {
        QTest::addColumn<bool>("former");
        QTest::addColumn<int>("damage");
        QTest::newRow("truncated database") << false << 0;
        QTest::newRow("overwritten database") << false << 1;
        QTest::newRow("truncated former file") << true << 0;
        QTest::newRow("unparsable former file") << true << 1;
    }

    void aDamagedFileIsKeptBesideTheNewOne()
    {
        QFETCH(bool, former);
        QFETCH(int, damage);
        MemoryPlatform memory;
        ScratchDomain domain;
        const QString database = domain.defaults->filePath();
        QString file = database;
        {
            Model model(*domain.defaults, memory.platform(), false, memory.pasteboard);
            fillLikeAUser(model);
        }
        if (former) {
            // The same user's settings as the former JSON file had them.
            QList<std::pair<QString, QJsonValue>> entries;
            const auto keys = {u"productivity.notes"_qs, u"productivity.pins"_qs, u"preferences.v3"_qs};
            for (const QString& key : keys) {
                entries.append(
                    {key, QJsonObject{{u"type"_qs, u"data"_qs},
                                      {u"value"_qs, Json::encodeData(*domain.defaults->dataValue(key))}}});
            }
            entries.append(
                {u"welcome.completed"_qs, QJsonObject{{u"type"_qs, u"bool"_qs}, {u"value"_qs, true}}});
            domain.defaults.reset();
            Defaults::removeDomain(domain.name, domain.folder);
            file = domain.folder + u'/' + domain.name + u".json"_qs;
            writeFile(file, formerDocument(entries));
        }
        domain.defaults.reset();
        const QByteArray intact = readFile(file);
        QVERIFY(intact.size() > 200);
        const QByteArray damaged =
            damage == 0 ? intact.left(intact.size() / 2) : QByteArray("kaputt").append(intact.mid(6));
        writeFile(file, damaged);

        auto model = std::make_unique<Model>(domain.reopen(), memory.platform(), false, memory.pasteboard);
        QVERIFY(model->productivity().notes().isEmpty());
        QVERIFY(!model->onboarding().completed());
        const QString copy = keptCopy(*model);
        QVERIFY2(!copy.isEmpty(), qPrintable(model->notices().first().detail));
        QCOMPARE(readFile(copy), damaged);
        QVERIFY(model->message().startsWith(u"Nicht lesbar: "));
        QVERIFY(model->message().contains(copy));

        // The fresh domain takes new notes; the copy outlives them and a restart, and a start
        // with nothing damaged says nothing.
        model->productivity().addNote(u"Neu"_qs);
        model.reset();
        model = std::make_unique<Model>(domain.reopen(), memory.platform(), false, memory.pasteboard);
        QCOMPARE(noteTexts(*model), QStringList{u"Neu"_qs});
        QCOMPARE(readFile(copy), damaged);
        QCOMPARE(model->message(), QString());
        QCOMPARE(noticesTitled(*model, u"Gespeicherte Daten nicht lesbar"_qs), 1);
        QVERIFY(QFileInfo::exists(database));
    }

    void oneUnreadableValueIsKeptBeforeItIsReplaced_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QByteArray>("kept");
        QTest::addColumn<QString>("what");
        const QByteArray notes =
            QJsonDocument(QJsonArray{note(u"eins"_qs), note(u"zwei"_qs, u"keine-id"_qs), note(u"drei"_qs)})
                .toJson(QJsonDocument::Compact);
        QTest::newRow("one invalid note")
            << u"productivity.notes"_qs << QVariant(notes) << notes << u"die Notizen"_qs;
        const QByteArray presets = R"([{"id":"6F9619FF-8B86-D011-B42D-00C04FC964FF","name":"Arbeit"}])";
        QTest::newRow("workspace without paths")
            << u"productivity.workspaces"_qs << QVariant(presets) << presets << u"die Arbeitsbereiche"_qs;
        QTest::newRow("a pin that is a number")
            << u"productivity.pins"_qs << QVariant(QByteArray(R"(["IBAN",3])")) << QByteArray(R"(["IBAN",3])")
            << u"die Favoriten des Verlaufs"_qs;
        const QByteArray notices = R"([{"id":"6F9619FF-8B86-D011-B42D-00C04FC964FF","title":"x","detail":"",)"
                                   R"("date":"heute"}])";
        QTest::newRow("a notice with a date in words")
            << u"notices.v1"_qs << QVariant(notices) << notices << u"die Aktivitätsliste"_qs;
        PreferenceValues values;
        values.layout = PanelLayout::wide;
        QJsonObject incomplete = QJsonDocument::fromJson(values.encode()).object();
        incomplete.remove(u"focusSound"_qs);
        const QByteArray preferences = QJsonDocument(incomplete).toJson(QJsonDocument::Compact);
        QTest::newRow("preferences without a field") << u"preferences.v3"_qs << QVariant(preferences)
                                                     << preferences << u"die Einstellungen des Panels"_qs;
        QTest::newRow("a draft stored as a number")
            << u"noteDraft"_qs << QVariant(qint64(42)) << QByteArray("42") << u"der Entwurf einer Notiz"_qs;
    }

    void oneUnreadableValueIsKeptBeforeItIsReplaced()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, stored);
        QFETCH(QByteArray, kept);
        QFETCH(QString, what);
        MemoryPlatform memory;
        ScratchDomain domain;
        {
            Model model(*domain.defaults, memory.platform(), false, memory.pasteboard);
            model.productivity().addNote(u"bleibt"_qs);
        }
        if (stored.typeId() == QMetaType::QByteArray)
            domain.defaults->setData(key, stored.toByteArray());
        else
            domain.defaults->setInteger(key, stored.toLongLong());

        auto model = std::make_unique<Model>(domain.reopen(), memory.platform(), false, memory.pasteboard);
        const QString copy = keptCopy(*model);
        QCOMPARE(readFile(copy), kept);
        QVERIFY(copy.endsWith(u'.' + key));
        QVERIFY(model->message().contains(what));
        QVERIFY(model->message().contains(copy));
        // Only the unreadable value starts empty: the note stored beside it is still there.
        if (key != u"productivity.notes")
            QCOMPARE(noteTexts(*model), QStringList{u"bleibt"_qs});

        // Using the area writes over the stored value; the copy stays, and is reported once.
        model->productivity().addNote(u"neu"_qs);
        model->addNotice(u"Fokus geschafft"_qs, QString());
        model->productivity().setNoteDraft(u"weiter"_qs);
        model.reset();
        model = std::make_unique<Model>(domain.reopen(), memory.platform(), false, memory.pasteboard);
        QCOMPARE(readFile(copy), kept);
        QCOMPARE(noticesTitled(*model, u"Gespeicherte Daten nicht lesbar"_qs), 1);
        QCOMPARE(model->message(), QString());
    }
};

int runDamageTests(int argc, char** argv)
{
    DamageTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "DamageTest.moc"
