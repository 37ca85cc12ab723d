#include "ui/ToggleRow.h"

#include "ui/TextLabel.h"
#include "ui/ToggleSwitch.h"

#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>

ToggleRow::ToggleRow(const QString& label, const QString& note, QWidget* parent)
    : QWidget(parent), m_label((new TextLabel(label, 13))->wrapping()), m_switch(new ToggleSwitch)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 2, 0, 2);
    column->setSpacing(2);
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(m_label, 1);
    row->addWidget(m_switch, 0, Qt::AlignVCenter);
    column->addLayout(row);
    if (!note.isEmpty())
        column->addWidget((new TextLabel(note, 11, TextLabel::secondary))->wrapping());
    m_switch->setAccessibleName(label);
    connect(m_switch, &ToggleSwitch::toggled, this, &ToggleRow::toggled);
}

bool ToggleRow::isChecked() const
{
    return m_switch->isChecked();
}

void ToggleRow::setState(bool checked)
{
    const QSignalBlocker blocker(m_switch);
    m_switch->setChecked(checked);
    m_switch->update();
}

QString ToggleRow::label() const
{
    return m_label->text();
}
