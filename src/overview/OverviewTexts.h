#pragma once

#include <QString>

// Fixed texts of the mini overview.
class OverviewTexts
{
public:
    static QString miniHeadline();
    static QString miniSearchHint();
    static QString miniExpandHint();
};
