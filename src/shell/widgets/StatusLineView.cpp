#include "shell/widgets/StatusLineView.h"

#include "model/Model.h"
#include "settings/Preferences.h"
#include "shell/StatusLine.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>

StatusLineView::StatusLineView(Model& model, QWidget* parent)
    : QWidget(parent), m_model(model), m_text(new TextLabel(QString(), 11, TextLabel::secondary)),
      m_trailing(new TextLabel(StatusLine::trailing(), 9, TextLabel::caps))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    m_text->setMinimumWidth(40);
    row->addWidget(m_text, 1);
    row->addWidget(m_trailing);
    connect(&model, &Model::messageChanged, this, &StatusLineView::sync);
    connect(&model.preferences(), &Preferences::valuesChanged, this, &StatusLineView::sync);
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
    const QString text = StatusLine::text(m_model.message(), m_model.preferences().values().shortcut);
    m_text->setText(text);
    m_text->setToolTip(text);
}
