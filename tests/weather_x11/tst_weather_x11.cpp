// The weather as a user meets it: the real program on the X server, its forecast and city search
// served by a local server, clicked and typed into with xdotool, and read back the way a screen
// reader reads it.

#include "AtspiScreen.h"
#include "DesktopFixtures.h"
#include "FakeWebServer.h"
#include "ForecastSample.h"

#include "settings/Defaults.h"
#include "settings/PreferenceValues.h"
#include "settings/Preferences.h"
#include "weather/WeatherCache.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QJsonArray>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QUrlQuery>

#include <functional>

#include <memory>

namespace {

const QString application = QStringLiteral("Brenlow");

void xdotool(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), arguments);
    process.waitForFinished(10000);
}

void clickAt(const QPoint& point)
{
    xdotool({QStringLiteral("mousemove"), QString::number(point.x()), QString::number(point.y()),
             QStringLiteral("click"), QStringLiteral("1")});
}

// Steps around the current hour, so the program's real clock finds "now" in them: the current
// hour and the next two are 21.4 °C and clear, later hours differ.
QByteArray forecastAroundNow()
{
    QDateTime hour = QDateTime::currentDateTimeUtc();
    hour.setTime(QTime(hour.time().hour(), 0));
    static const QStringList later = {"cloudy", "lightrain", "partlycloudy_day", "fog", "rainshowers_day"};
    QJsonArray steps;
    for (int i = -1; i < 59; ++i) {
        const bool soon = i <= 2;
        steps.append(ForecastSample::stepObject(hour.addSecs(3600 * i), soon ? 21.4 : 14.0 + (i % 7) * 0.8,
                                                soon ? QStringLiteral("clearsky_day") : later.at(i % 5)));
    }
    for (int i = 0; i < 20; ++i)
        steps.append(ForecastSample::stepObject(hour.addSecs(3600 * 59 + 21600 * i), 11.5, QString()));
    return ForecastSample::wrap(steps);
}

QByteArray httpDate(const QDateTime& when)
{
    return QLocale::c().toString(when.toUTC(), QStringLiteral("ddd, dd MMM yyyy HH:mm:ss")).toLatin1() +
           " GMT";
}

} // namespace

class WeatherX11Test : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;
    FakeWebServer m_server;
    std::unique_ptr<QProcess> m_program;
    std::unique_ptr<AtspiScreen> m_screen;
    // The forecast service answers 429 while this is set.
    bool m_serviceBusy = false;

    void startProgram()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.filePath(QStringLiteral("config")));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), m_home.filePath(QStringLiteral("data")));
        environment.insert(QStringLiteral("XDG_CACHE_HOME"), m_home.filePath(QStringLiteral("cache")));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_home.filePath(QStringLiteral("runtime")));
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        environment.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
        const QString base = m_server.base().toString();
        for (const char* variable :
             {"BRENLOW_MET_BASE_URL", "BRENLOW_GEOCODE_BASE_URL", "BRENLOW_REVERSE_GEOCODE_BASE_URL"})
            environment.insert(QString::fromLatin1(variable), base);
        m_program = std::make_unique<QProcess>();
        m_program->setProcessEnvironment(environment);
        m_program->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_program->start(QStringLiteral(BRENLOW_BINARY), QStringList());
        QVERIFY(m_program->waitForStarted());
    }

    void stopProgram()
    {
        m_program->terminate();
        QVERIFY(m_program->waitForFinished(10000));
        QCOMPARE(m_program->exitCode(), 0);
        m_program.reset();
    }

    using Match = std::function<bool(const QString&)>;

    static Match is(const QString& text)
    {
        return [text](const QString& name) { return name == text; };
    }

    // The first showing widget of this role and name once it stands still on the screen (the
    // panel slides open, so a place read mid-way would be missed by the click); logs what the
    // screen shows when it never comes.
    std::optional<AtspiNode> waitFor(const QString& role, const Match& matches, int ms = 15000) const
    {
        QDeadlineTimer deadline(ms);
        std::optional<AtspiNode> previous;
        while (!deadline.hasExpired()) {
            const std::optional<AtspiNode> node = m_screen->find(application, role, matches);
            if (node && previous && node->extents == previous->extents)
                return node;
            previous = node;
            QTest::qWait(150);
        }
        qWarning().noquote() << "no" << role << "appeared; the program shows:\n" << screenText();
        return std::nullopt;
    }

    // Touches the closed panel at the top of the screen; the open panel's top row has the
    // weather header, a button named after the place or "Ort & Wetter" before there is one.
    std::optional<AtspiNode> openPanel()
    {
        // The closed panel has to be on the screen before the pointer arrives, or it sees no entry.
        if (!waitFor(QStringLiteral("filler"), is(application)))
            return std::nullopt;
        xdotool({QStringLiteral("mousemove"), QStringLiteral("960"), QStringLiteral("300")});
        xdotool({QStringLiteral("mousemove"), QStringLiteral("960"), QStringLiteral("3")});
        return waitFor(QStringLiteral("push button"), [](const QString& name) {
            return name == QStringLiteral("Ort & Wetter") || name == QStringLiteral("Berlin");
        });
    }

    // Every showing widget as "role 'name' rect", for the log of a failed check.
    QString screenText() const
    {
        QStringList lines;
        for (const AtspiNode& node : m_screen->showing(application))
            lines.append(QStringLiteral("%1 '%2' %3,%4 %5x%6")
                             .arg(node.role, node.name)
                             .arg(node.extents.x())
                             .arg(node.extents.y())
                             .arg(node.extents.width())
                             .arg(node.extents.height()));
        return lines.join(u'\n');
    }

    std::optional<AtspiNode> label(const Match& matches) const
    {
        return waitFor(QStringLiteral("label"), matches);
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        QVERIFY(QDir(m_home.path()).mkpath(QStringLiteral("runtime")));
        QFile::setPermissions(m_home.filePath(QStringLiteral("runtime")),
                              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        m_screen = std::make_unique<AtspiScreen>();
        QVERIFY2(m_screen->connected(), "no accessibility bus");
        // The tour is over: the program starts as on any later day.
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_home.filePath(QStringLiteral("config"))));
        Defaults(QString::fromLatin1(Defaults::standardDomain))
            .setBool(QStringLiteral("welcome.completed"), true);

        const QByteArray forecast = forecastAroundNow();
        m_server.route("/weatherapi", [this, forecast](const FakeWebServer::Request&) {
            if (m_serviceBusy)
                return FakeWebServer::json("{}", 429).with("Retry-After", "120");
            FakeWebServer::Reply reply = FakeWebServer::json(forecast);
            reply.with("Expires", httpDate(QDateTime::currentDateTimeUtc().addSecs(1800)));
            reply.with("Last-Modified", httpDate(QDateTime::currentDateTimeUtc().addSecs(-600)));
            return reply;
        });
        m_server.route("/v1/search", [](const FakeWebServer::Request& request) {
            if (QUrlQuery(request.url).queryItemValue(QStringLiteral("name")) != QStringLiteral("Berlin"))
                return FakeWebServer::json(R"({"generationtime_ms":0.2})");
            return FakeWebServer::json(
                R"({"results":[{"id":2950159,"name":"Berlin","latitude":52.52437,"longitude":13.41053,)"
                R"("country":"Deutschland","admin1":"Berlin"},)"
                R"({"id":5083330,"name":"Berlin","latitude":44.46867,"longitude":-71.18508,)"
                R"("country":"Vereinigte Staaten","admin1":"New Hampshire"}]})");
        });
    }

    void cleanup()
    {
        if (m_program) {
            m_program->kill();
            m_program->waitForFinished();
            m_program.reset();
        }
        xdotool({QStringLiteral("mousemove"), QStringLiteral("960"), QStringLiteral("900")});
    }

    // Search "Berlin", pick it, see the weather in the header and on the page; after a restart
    // the weather is there at once, from the cache, without asking the service again.
    void searchPickAndKeepAcrossARestart()
    {
        startProgram();
        std::optional<AtspiNode> header = openPanel();
        QVERIFY(header);
        QCOMPARE(header->name, QStringLiteral("Ort & Wetter"));
        clickAt(header->extents.center());

        const auto field = waitFor(QStringLiteral("text"), is(QStringLiteral("Stadt suchen …")));
        QVERIFY(field);
        clickAt(field->extents.center());
        xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("20"),
                 QStringLiteral("Berlin")});
        xdotool({QStringLiteral("key"), QStringLiteral("Return")});

        const auto berlin = waitFor(QStringLiteral("list item"), is(QStringLiteral("Berlin · Deutschland")));
        QVERIFY(berlin);
        QVERIFY(m_screen->find(application, QStringLiteral("list item"),
                               QStringLiteral("Berlin · New Hampshire, Vereinigte Staaten")));
        const QUrlQuery search(m_server.requests().last().url);
        QCOMPARE(search.queryItemValue(QStringLiteral("name")), QStringLiteral("Berlin"));
        QCOMPARE(search.queryItemValue(QStringLiteral("language")), QStringLiteral("de"));
        clickAt(berlin->extents.center());

        // The header: the place and the rounded temperature; the page: the German description.
        QVERIFY(label(is(QStringLiteral("21°"))));
        QVERIFY(waitFor(QStringLiteral("push button"), is(QStringLiteral("Berlin"))));
        QVERIFY(label(is(QStringLiteral("Klar"))));
        QCOMPARE(m_server.count("/weatherapi"), 1);
        const FakeWebServer::Request forecast = m_server.requests().last();
        QCOMPARE(forecast.url.query(), QStringLiteral("lat=52.52&lon=13.41"));
        QVERIFY(forecast.headers.value("user-agent").startsWith("Brenlow/"));

        stopProgram();
        const qsizetype before = m_server.requests().size();
        startProgram();
        header = openPanel();
        QVERIFY(header);
        QCOMPARE(header->name, QStringLiteral("Berlin"));
        QVERIFY(label(is(QStringLiteral("21°"))));
        // Long enough for the start's refresh to have gone out, had it asked.
        QTest::qWait(1500);
        QCOMPARE(m_server.requests().size(), before);
        stopProgram();
    }

    // The cached forecast ran out while the service is busy: the last weather stays in the header
    // and the page says in German why it is not new.
    void aBusyServiceKeepsTheLastWeather()
    {
        {
            Defaults defaults(QString::fromLatin1(Defaults::standardDomain));
            const QString key = QString::fromLatin1(WeatherCache::defaultsKey);
            std::optional<WeatherCache> cache =
                WeatherCache::decode(defaults.dataValue(key).value_or(QByteArray()));
            QVERIFY2(cache, "the first case left no cached forecast");
            cache->expires = QDateTime::currentDateTimeUtc().addSecs(-60);
            defaults.setData(key, cache->encode());
        }
        m_serviceBusy = true;
        const int before = m_server.count("/weatherapi");
        startProgram();
        const std::optional<AtspiNode> header = openPanel();
        QVERIFY(header);
        QCOMPARE(header->name, QStringLiteral("Berlin"));
        QTRY_COMPARE_WITH_TIMEOUT(m_server.count("/weatherapi"), before + 1, 10000);
        QVERIFY(m_server.requests().last().headers.contains("if-modified-since"));
        QVERIFY(label(is(QStringLiteral("21°"))));
        clickAt(header->extents.center());
        QVERIFY(label(is(QStringLiteral("Wetterdienst ausgelastet. Abrufe werden vorübergehend pausiert."))));
        QVERIFY(label(is(QStringLiteral("Klar"))));

        // Refreshing during the pause asks nobody.
        const auto refresh =
            waitFor(QStringLiteral("push button"), is(QStringLiteral("Wetter aktualisieren")));
        QVERIFY(refresh);
        clickAt(refresh->extents.center());
        QVERIFY(label([](const QString& text) {
            return text.startsWith(QStringLiteral("Wetterdienst pausiert. Nächster Versuch ab "));
        }));
        QCOMPARE(m_server.count("/weatherapi"), before + 1);
        stopProgram();
        m_serviceBusy = false;
    }

    // The header carries the chosen place and its temperature in every layout, and leads to the
    // weather page there.
    void everyLayoutShowsTheWeather_data()
    {
        QTest::addColumn<PanelLayout>("layout");
        for (PanelLayout layout : PanelLayouts::all())
            QTest::newRow(qPrintable(PanelLayouts::rawValue(layout))) << layout;
    }
    void everyLayoutShowsTheWeather()
    {
        QFETCH(PanelLayout, layout);
        {
            Defaults defaults(QString::fromLatin1(Defaults::standardDomain));
            PreferenceValues values;
            values.layout = layout;
            defaults.setData(QString::fromLatin1(Preferences::storageKey), values.encode());
        }
        startProgram();
        const std::optional<AtspiNode> header = openPanel();
        QVERIFY(header);
        QCOMPARE(header->name, QStringLiteral("Berlin"));
        const auto temperature = label(is(QStringLiteral("21°")));
        QVERIFY(temperature);
        // Beside the place, on the same row, whole.
        QVERIFY(temperature->extents.width() > 0);
        QVERIFY(temperature->extents.left() >= header->extents.right());
        QVERIFY(qAbs(temperature->extents.center().y() - header->extents.center().y()) <
                header->extents.height());
        clickAt(header->extents.center());
        QVERIFY(label(is(QStringLiteral("Klar"))));
        QVERIFY(waitFor(QStringLiteral("text"), is(QStringLiteral("Stadt suchen …"))));
        stopProgram();
    }
};

int main(int argc, char** argv)
{
    // Our own session bus and accessibility bus, so the program's widgets are ours alone to read.
    PrivateDesktopSession session;
    if (!session.ready()) {
        std::fprintf(stderr, "no private session bus with an accessibility bus\n");
        return 1;
    }
    QCoreApplication app(argc, argv);
    WeatherX11Test test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_weather_x11.moc"
