#include "clipboard/widgets/HistorySettings.h"

#include "clipboard/ClipboardHistory.h"
#include "clipboard/HistoryTexts.h"
#include "ui/Divider.h"
#include "ui/TextLabel.h"
#include "ui/ToggleRow.h"

#include <QPushButton>
#include <QVBoxLayout>

HistorySettings::HistorySettings(ClipboardHistory& history, QWidget* parent)
    : QWidget(parent), m_recording(new ToggleRow(HistoryTexts::recordingToggle())),
      m_clear(new QPushButton(HistoryTexts::clearHistory()))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(new Divider);
    column->addWidget(m_recording);
    column->addWidget((new TextLabel(HistoryTexts::historyNote(), 11, TextLabel::secondary))->wrapping());
    column->addWidget(m_clear, 0, Qt::AlignLeft);
    m_clear->setCursor(Qt::PointingHandCursor);

    connect(m_recording, &ToggleRow::toggled, &history, &ClipboardHistory::setRecording);
    connect(m_clear, &QPushButton::clicked, &history, &ClipboardHistory::clearHistory);
    connect(&history, &ClipboardHistory::recordingChanged, this,
            [this, &history] { m_recording->setState(history.recording()); });
    m_recording->setState(history.recording());
}
