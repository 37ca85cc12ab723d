#include "shell/SettingsTexts.h"

#include <algorithm>
#include <cmath>

QStringList SettingsTexts::sections()
{
    return {QStringLiteral("Menüleiste"), QStringLiteral("Ansicht"), QStringLiteral("Bedienung"),
            QStringLiteral("Fokus & Daten"), QStringLiteral("Verbindungen")};
}

QString SettingsTexts::switcherName()
{
    return QStringLiteral("Bereich");
}
QString SettingsTexts::productLine()
{
    return QStringLiteral("BRENLOW ") + QStringLiteral(BRENLOW_VERSION);
}
QString SettingsTexts::quit()
{
    return QStringLiteral("Beenden");
}

QString SettingsTexts::replayWelcome()
{
    return QStringLiteral("Einführung & Berechtigungen erneut öffnen");
}
QString SettingsTexts::formHeader()
{
    return QStringLiteral("DEINE FORM");
}

QString SettingsTexts::layoutCaption(PanelLayout layout)
{
    return PanelLayouts::description(layout) + QStringLiteral(" · Änderungen werden sofort übernommen.");
}

QString SettingsTexts::layoutSymbol(PanelLayout layout)
{
    switch (layout) {
    case PanelLayout::wide:
        return QStringLiteral("rectangle.split.3x1");
    case PanelLayout::balanced:
        return QStringLiteral("rectangle.split.2x1");
    case PanelLayout::tall:
        return QStringLiteral("rectangle.split.1x2");
    }
    return {};
}

QString SettingsTexts::miniToggle()
{
    return QStringLiteral("Übersicht im Mini-Modus öffnen");
}
QString SettingsTexts::rememberPageToggle()
{
    return QStringLiteral("Letzten Bereich beim Öffnen behalten");
}
QString SettingsTexts::screenMainToggle()
{
    return QStringLiteral("Auf dem Hauptbildschirm anzeigen");
}
QString SettingsTexts::screenMainNote()
{
    return QStringLiteral("Sonst bevorzugt Brenlow das Display mit Notch.");
}
QString SettingsTexts::animateToggle()
{
    return QStringLiteral("Sanfte Größenwechsel");
}

QString SettingsTexts::hoverToggle()
{
    return QStringLiteral("Beim Darüberfahren öffnen und beim Verlassen schließen");
}

QString SettingsTexts::openDelayLabel()
{
    return QStringLiteral("Öffnen nach");
}
QString SettingsTexts::closeDelayLabel()
{
    return QStringLiteral("Schließen nach");
}

QString SettingsTexts::hoverNote()
{
    return QStringLiteral(
        "Die Stecknadel hält das Panel offen. Beim Ziehen, in Menüs und in Dateidialogen bleibt "
        "es ebenfalls geöffnet.");
}

QString SettingsTexts::commandsToggle()
{
    return QStringLiteral("Menübefehle beim Halten von Command anzeigen");
}
QString SettingsTexts::commandDelayLabel()
{
    return QStringLiteral("Command halten");
}
QString SettingsTexts::shortcutPicker()
{
    return QStringLiteral("Copy-Verlauf");
}

QString SettingsTexts::shortcutChoice(HistoryShortcut shortcut)
{
    if (shortcut == HistoryShortcut::off)
        return QStringLiteral("Aus");
    return HistoryShortcuts::label(shortcut);
}

QString SettingsTexts::delayText(double seconds)
{
    return QString::asprintf("%.2f s", seconds);
}

int SettingsTexts::delayToSlider(double seconds)
{
    return int(std::lround(seconds * 100.0));
}

double SettingsTexts::sliderToDelay(int position)
{
    return position / 100.0;
}
