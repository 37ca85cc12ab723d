#include "ui/PanelTheme.h"

#include <QStringList>

QFont PanelTheme::font(int pixelSize, QFont::Weight weight)
{
    QFont font;
    font.setFamilies({QStringLiteral("Inter"), QStringLiteral("Cantarell"), QStringLiteral("Noto Sans"),
                      QStringLiteral("Nimbus Sans"), QStringLiteral("DejaVu Sans")});
    font.setPixelSize(pixelSize);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QFont PanelTheme::digits(int pixelSize, QFont::Weight weight)
{
    QFont font;
    font.setFamilies({QStringLiteral("JetBrains Mono"), QStringLiteral("Noto Sans Mono"),
                      QStringLiteral("DejaVu Sans Mono")});
    font.setStyleHint(QFont::Monospace);
    font.setPixelSize(pixelSize);
    font.setWeight(weight);
    return font;
}

QString PanelTheme::buttonText(QString text)
{
    return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

QString PanelTheme::styleSheet()
{
    const QString text = PanelTheme::text().name();
    const QString secondary = PanelTheme::secondary().name();
    const QString accent = PanelTheme::accent().name();
    return QStringLiteral(R"(
QWidget { color: %1; background: transparent; }
QLabel[role="secondary"] { color: %2; }
QLabel[role="caps"] { color: %2; font-weight: 600; letter-spacing: 1px; }
QToolTip { color: #f5f5f7; background: #1c1c1f; border: 1px solid #333338; padding: 4px; }
QPushButton {
    color: %1; background: rgba(255,255,255,0.10); border: none; border-radius: 8px; padding: 5px 12px;
}
QPushButton:hover { background: rgba(255,255,255,0.16); }
QPushButton:pressed { background: rgba(255,255,255,0.22); }
QPushButton:disabled { color: #5a5a60; background: rgba(255,255,255,0.05); }
QPushButton[kind="primary"] { color: #0a0c18; background: %3; font-weight: 600; }
QPushButton[kind="primary"]:hover { background: #93aeff; }
QPushButton[kind="plain"] { background: transparent; color: %2; padding: 5px 6px; }
QPushButton[kind="plain"]:hover { color: %1; }
QPushButton[kind="chip"] { border-radius: 11px; padding: 3px 4px; background: rgba(255,255,255,0.08); color: %2; }
QPushButton[kind="chip"]:checked { background: %3; color: #0a0c18; font-weight: 600; }
QPushButton[kind="segment"] { border-radius: 7px; padding: 4px 8px; background: transparent; color: %2; }
QPushButton[kind="segment"]:checked { background: rgba(255,255,255,0.16); color: %1; font-weight: 600; }
QComboBox {
    color: %1; background: rgba(255,255,255,0.10); border: none; border-radius: 8px; padding: 4px 10px;
}
QComboBox::drop-down { border: none; width: 20px; }
QComboBox::down-arrow { image: url(:/brenlow/chevron-down.svg); width: 10px; height: 10px; }
QComboBox QAbstractItemView {
    color: %1; background: #1c1c1f; border: 1px solid #333338; selection-background-color: %3;
    selection-color: #0a0c18; outline: none;
}
QSlider::groove:horizontal { height: 4px; border-radius: 2px; background: rgba(255,255,255,0.14); }
QSlider::sub-page:horizontal { height: 4px; border-radius: 2px; background: %3; }
QSlider::handle:horizontal { width: 14px; height: 14px; margin: -5px 0; border-radius: 7px; background: #f5f5f7; }
QScrollArea { border: none; }
QScrollBar:vertical { width: 6px; background: transparent; margin: 2px; }
QScrollBar::handle:vertical { background: rgba(255,255,255,0.22); border-radius: 3px; min-height: 24px; }
QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }
QScrollBar::add-page:vertical, QScrollBar::sub-page:vertical { background: transparent; }
QMenu { color: %1; background: #1c1c1f; border: 1px solid #333338; padding: 4px; }
QMenu::item { padding: 5px 18px; border-radius: 5px; }
QMenu::item:selected { background: %3; color: #0a0c18; }
QMenu::item:disabled { color: #686870; background: transparent; }
QMenu::separator { height: 1px; background: #333338; margin: 4px 6px; }
QListView { border: none; outline: none; }
)")
        .arg(text, secondary, accent);
}
