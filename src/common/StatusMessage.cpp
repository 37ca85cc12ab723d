#include "common/StatusMessage.h"

StatusMessage::StatusMessage(Scheduler& scheduler, QObject* parent)
    : QObject(parent), m_dismiss(scheduler, this)
{}

void StatusMessage::setText(const QString& text)
{
    m_dismiss.cancel();
    if (m_text != text) {
        m_text = text;
        Q_EMIT textChanged();
    }
    if (!text.isEmpty())
        m_dismiss.schedule(lifetime, [this] { setText(QString()); });
}
