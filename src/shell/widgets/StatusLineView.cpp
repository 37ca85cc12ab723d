#include "shell/widgets/StatusLineView.h"

#include "common/StatusMessage.h"
#include "settings/Preferences.h"
#include "shell/StatusLine.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>

StatusLineView::StatusLineView(const StatusMessage& message, const Preferences& preferences, QWidget* parent)
    : QWidget(parent), m_message(message), m_preferences(preferences),
      m_text(new TextLabel(QString(), 11, TextLabel::secondary)),
      m_trailing(new TextLabel(StatusLine::trailing(), 9, TextLabel::caps))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    m_text->setMinimumWidth(40);
    row->addWidget(m_text, 1);
    row->addWidget(m_trailing);
    connect(&message, &StatusMessage::textChanged, this, &StatusLineView::sync);
    connect(&preferences, &Preferences::valuesChanged, this, &StatusLineView::sync);
    sync();
}

QString StatusLineView::text() const
{
    return m_text->text();
}
QString StatusLineView::trailingText() const
{
    return m_trailing->text();
}

void StatusLineView::sync()
{
    const QString text = StatusLine::text(m_message.text(), m_preferences.values().shortcut);
    m_text->setText(text);
    m_text->setToolTip(text);
}
