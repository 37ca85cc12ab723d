#include "ui/SegmentedControl.h"

#include "ui/PanelTheme.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>

SegmentedControl::SegmentedControl(const QStringList& labels, const QString& accessibleName, QWidget* parent)
    : QWidget(parent), m_group(new QButtonGroup(this)), m_labels(labels)
{
    setAccessibleName(accessibleName);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(3, 3, 3, 3);
    row->setSpacing(2);
    for (int i = 0; i < labels.size(); ++i) {
        auto* button = new QPushButton(PanelTheme::buttonText(labels.at(i)));
        button->setProperty("kind", QStringLiteral("segment"));
        button->setCheckable(true);
        button->setCursor(Qt::PointingHandCursor);
        button->setFont(PanelTheme::font(12));
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        m_group->addButton(button, i);
        row->addWidget(button);
    }
    m_group->setExclusive(true);
    connect(m_group, &QButtonGroup::idClicked, this, [this](int id) { Q_EMIT chosen(m_labels.at(id)); });
}

void SegmentedControl::setCurrent(const QString& label)
{
    const int id = int(m_labels.indexOf(label));
    if (id >= 0) {
        m_group->button(id)->setChecked(true);
        return;
    }
    // An unknown section marks nothing rather than a wrong one.
    m_group->setExclusive(false);
    for (QAbstractButton* button : m_group->buttons())
        button->setChecked(false);
    m_group->setExclusive(true);
}

QString SegmentedControl::current() const
{
    const int id = m_group->checkedId();
    return id >= 0 ? m_labels.at(id) : QString();
}

QPushButton* SegmentedControl::button(const QString& label) const
{
    return qobject_cast<QPushButton*>(m_group->button(int(m_labels.indexOf(label))));
}

void SegmentedControl::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(PanelTheme::card());
    painter.drawRoundedRect(QRectF(rect()), 9, 9);
}
