#pragma once

#include <QDateTime>
#include <QString>

// The test classes of this program; main runs them in turn.
int runForecastTests(int argc, char** argv);
int runStoreTests(int argc, char** argv);
int runGeocoderTests(int argc, char** argv);
int runViewTests(int argc, char** argv);

inline QDateTime utc(const char* iso)
{
    return QDateTime::fromString(QString::fromLatin1(iso), Qt::ISODate);
}
