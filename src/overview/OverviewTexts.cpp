#include "overview/OverviewTexts.h"

QString OverviewTexts::miniHeadline()
{
    return QStringLiteral("Alles griffbereit");
}
QString OverviewTexts::miniSearchHint()
{
    return QStringLiteral("Mac durchsuchen");
}
QString OverviewTexts::miniExpandHint()
{
    return QStringLiteral("Übersicht ausklappen");
}
