// Weather figures: decoding and choosing the present step of a realistic forecast, the main
// thread's share of one refresh cycle against a local server, and the requests one place costs a
// day when the server's Expires is honoured.
#include "FakeWebServer.h"
#include "ForecastSample.h"

#include "common/Clock.h"
#include "platform/memory/MemoryPlatform.h"
#include "settings/Defaults.h"
#include "weather/METForecast.h"
#include "weather/WeatherStore.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLocale>
#include <QStandardPaths>
#include <QUuid>

#include <algorithm>
#include <cstdio>

namespace {

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

QByteArray httpDate(const QDateTime& when)
{
    return QLocale::c().toString(when.toUTC(), QStringLiteral("ddd, dd MMM yyyy HH:mm:ss")).toLatin1() +
           " GMT";
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    const QDateTime start = QDateTime::fromString(QStringLiteral("2026-09-20T00:00:00Z"), Qt::ISODate);
    const QByteArray document = ForecastSample::realistic(start, 60);

    // 1. Decode and select.
    std::vector<double> decode;
    for (int i = 0; i < 300; ++i) {
        QElapsedTimer timer;
        timer.start();
        const auto forecast = METForecast::decode(document);
        const auto current = forecast->current(start.addSecs(3600 * 20 + 600));
        decode.push_back(timer.nsecsElapsed() / 1e6);
        if (!current)
            return 1;
    }
    std::printf("decode+select of %lld bytes (%d steps): median %.3f ms, worst %.3f ms (goal < 2 ms)\n",
                qlonglong(document.size()), 80, median(decode),
                *std::max_element(decode.begin(), decode.end()));

    // 2. One refresh cycle's main-thread time and 3. requests per day with 30-minute Expires.
    FakeWebServer server;
    qputenv("BRENLOW_MET_BASE_URL", server.base().toEncoded());
    MemoryPlatform memory;
    memory.clock.setNow(start.addSecs(3600));
    int bodies = 0;
    server.route("/weatherapi", [&](const FakeWebServer::Request& request) {
        FakeWebServer::Reply reply = FakeWebServer::json(document);
        reply.with("Expires", httpDate(memory.clock.now().addSecs(1800)));
        reply.with("Last-Modified", "Sun, 20 Sep 2026 00:00:00 GMT");
        if (request.headers.contains("if-modified-since")) {
            reply.status = 304;
            reply.body.clear();
        } else {
            ++bodies;
        }
        return reply;
    });
    const QString domain =
        QStringLiteral("Brenlow.Bench.") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    Defaults defaults(domain);
    WeatherStore store(defaults, memory.clock, memory.scheduler, memory.location, true);
    store.select(WeatherPlace{0, QStringLiteral("Berlin"), 52.52, 13.41, std::nullopt, std::nullopt});
    std::vector<double> mainThread;
    // A day of the store's own timer (every 30–35 minutes), plus a refresh every ten minutes
    // from the user: the server's Expires decides how many requests go out.
    for (double elapsed = 0; elapsed < 86400; elapsed += 600) {
        memory.scheduler.advance(600);
        QElapsedTimer timer;
        timer.start();
        store.refresh();
        double spent = timer.nsecsElapsed() / 1e6;
        // The answer's handling is main-thread time too; waiting for the socket is not.
        while (store.busy()) {
            app.processEvents(QEventLoop::WaitForMoreEvents, 50);
        }
        timer.restart();
        app.processEvents();
        spent += timer.nsecsElapsed() / 1e6;
        mainThread.push_back(spent);
    }
    std::printf("refresh cycle main-thread time: median %.3f ms, worst %.3f ms (goal < 5 ms)\n",
                median(mainThread), *std::max_element(mainThread.begin(), mainThread.end()));
    std::printf("requests in 24 h for one place with 30-minute Expires: %d (%d with a body, %d answered 304 "
                "without one; goal <= 48)\n",
                store.requestCount(), bodies, store.requestCount() - bodies);
    defaults.removeDomain();
    return 0;
}
