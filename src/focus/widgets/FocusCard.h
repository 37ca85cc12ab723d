#pragma once

#include "ui/Card.h"

#include <QList>

class FocusTimer;
class QLabel;
class QPushButton;
class SymbolButton;

// The overview's focus timer: time left, start/pause, reset and the preset lengths.
class FocusCard : public Card
{
    Q_OBJECT
public:
    explicit FocusCard(FocusTimer& timer, QWidget* parent = nullptr);

    QString timeText() const;
    QString caption() const;
    SymbolButton* toggleButton() const { return m_toggle; }
    SymbolButton* resetButton() const { return m_reset; }
    QList<QPushButton*> presetButtons() const { return m_presets; }

private:
    void sync();

    FocusTimer& m_timer;
    QLabel* m_time;
    QLabel* m_caption;
    SymbolButton* m_toggle;
    SymbolButton* m_reset;
    QList<QPushButton*> m_presets;
};
