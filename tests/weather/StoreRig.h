#pragma once

#include "FakeWebServer.h"
#include "ForecastSample.h"
#include "TestSupport.h"

#include "weather/WeatherStore.h"

#include <memory>

// A weather store on the memory platform whose forecasts come from a local server.
struct StoreRig
{
    StoreRig()
    {
        qputenv("BRENLOW_MET_BASE_URL", server.base().toEncoded());
        memory.clock.setNow(QDateTime::fromString(QStringLiteral("2026-09-20T01:30:00Z"), Qt::ISODate));
        server.route("/weatherapi", [this](const FakeWebServer::Request&) { return forecast; });
        forecast = ok(ForecastSample::twoSteps());
        make(false);
    }
    ~StoreRig()
    {
        store.reset();
        qunsetenv("BRENLOW_MET_BASE_URL");
    }

    WeatherStore& make(bool services)
    {
        store.reset();
        store = std::make_unique<WeatherStore>(*domain.defaults, memory.clock, memory.scheduler,
                                               memory.location, services);
        return *store;
    }
    // Quits and starts again over the same settings file.
    WeatherStore& restart(bool services)
    {
        store.reset();
        domain.reopen();
        return make(services);
    }

    // An HTTP date `seconds` after the manual clock's now.
    QByteArray httpDate(qint64 seconds) const
    {
        return QLocale::c()
                   .toString(memory.clock.now().addSecs(seconds).toUTC(),
                             QStringLiteral("ddd, dd MMM yyyy HH:mm:ss"))
                   .toLatin1() +
               " GMT";
    }
    FakeWebServer::Reply ok(const QByteArray& body, int status = 200)
    {
        FakeWebServer::Reply reply = FakeWebServer::json(body, status);
        reply.with("Expires", httpDate(1800));
        reply.with("Last-Modified", "Sun, 20 Sep 2026 01:00:00 GMT");
        return reply;
    }
    std::optional<QByteArray> storedCache() const
    {
        return domain.defaults->dataValue(QStringLiteral("weather.met.cache.v1"));
    }

    MemoryPlatform memory;
    ScratchDomain domain;
    FakeWebServer server;
    FakeWebServer::Reply forecast;
    std::unique_ptr<WeatherStore> store;
};

inline WeatherPlace berlin()
{
    return WeatherPlace{0,     QStringLiteral("Berlin"),      52.52,
                        13.41, QStringLiteral("Deutschland"), QStringLiteral("Berlin")};
}
