#pragma once

#include <QWidget>

class ClipboardHistory;
class QPushButton;
class ToggleRow;

// The clipboard history's settings ("Fokus & Daten"): capture on or off, what is kept, clear all.
class HistorySettings : public QWidget
{
    Q_OBJECT
public:
    explicit HistorySettings(ClipboardHistory& history, QWidget* parent = nullptr);

    ToggleRow* recordingRow() const { return m_recording; }
    QPushButton* clearButton() const { return m_clear; }

private:
    ToggleRow* m_recording;
    QPushButton* m_clear;
};
