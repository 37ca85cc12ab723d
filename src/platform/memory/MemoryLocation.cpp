#include "platform/memory/MemoryLocation.h"

#include <QTimer>

void MemoryLocation::later(std::function<void()> work)
{
    if (m_holding)
        m_held.append(std::move(work));
    else
        QTimer::singleShot(0, this, std::move(work));
}

void MemoryLocation::release()
{
    const auto held = std::exchange(m_held, {});
    for (const auto& work : held)
        work();
}

void MemoryLocation::requestAuthorization()
{
    ++m_authorizationRequests;
    if (m_authorization != LocationAuthorization::notDetermined ||
        m_promptAnswer == LocationAuthorization::notDetermined)
        return;
    later([this] { changeAuthorization(m_promptAnswer); });
}

void MemoryLocation::changeAuthorization(LocationAuthorization authorization)
{
    if (m_authorization == authorization)
        return;
    m_authorization = authorization;
    Q_EMIT authorizationChanged(authorization);
}

void MemoryLocation::requestLocation()
{
    ++m_locationRequests;
    if (m_failing || m_authorization != LocationAuthorization::authorized) {
        later([this] { Q_EMIT locationFailed(); });
        return;
    }
    if (const auto fix = m_fix)
        later([this, fix = *fix] { Q_EMIT locationUpdated(fix); });
}

void MemoryLocation::reverseGeocode(double latitude, double longitude, Answer answer)
{
    m_reversePoints.append({latitude, longitude});
    const quint64 number = ++m_reverseNumber;
    later([this, number, answer = std::move(answer), reply = m_reverse] {
        if (number == m_reverseNumber)
            answer(reply);
    });
}

void MemoryLocation::cancelReverseGeocode()
{
    ++m_reverseNumber;
}

void MemoryLocation::geocode(const QString& text, Answer answer)
{
    m_geocodeTexts.append(text);
    const quint64 number = ++m_forwardNumber;
    GeocodeAnswer reply;
    reply.failed = m_geocodeFailing;
    if (!reply.failed)
        reply.placemarks = m_places.value(text.trimmed().toCaseFolded());
    later([this, number, answer = std::move(answer), reply] {
        if (number == m_forwardNumber)
            answer(reply);
    });
}

void MemoryLocation::cancelGeocode()
{
    ++m_forwardNumber;
}

bool MemoryLocation::openSettings()
{
    if (!m_settingsAvailable)
        return false;
    ++m_settingsOpened;
    return true;
}
