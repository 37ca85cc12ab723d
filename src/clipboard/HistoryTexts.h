#pragma once

#include <QDateTime>
#include <QString>

// Texts and symbols of the history page ("Verlauf").
class HistoryTexts
{
public:
    static QString searchPlaceholder();
    static QString recordingHint();
    // The pause/resume button shows what a click does.
    static QString recordingSymbol(bool recording);
    static QString clearHint();
    static QString clearSymbol();
    static QString pinHint();
    static QString pinSymbol(bool pinned);
    static QString deleteLabel();
    static QString deleteHint();
    static QString deleteSymbol();
    static QString emptySymbol();
    static QString emptyTitle();
    static QString emptyDetail();
    // A row's second line: its kind and when it was last copied ("Links · 14:05", or with the
    // day when that is not today).
    static QString rowCaption(const QString& kindLabel, const QDateTime& date, const QDateTime& now);

    // The history's part of the settings ("Fokus & Daten").
    static QString recordingToggle();
    static QString historyNote();
    static QString clearHistory();
};
