#include "WeatherTests.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    int failures = 0;
    failures += runForecastTests(argc, argv);
    failures += runStoreTests(argc, argv);
    failures += runGeocoderTests(argc, argv);
    failures += runViewTests(argc, argv);
    return failures;
}
