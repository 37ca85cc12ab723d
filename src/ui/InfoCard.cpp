#include "ui/InfoCard.h"

#include "ui/SymbolButton.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

InfoCard::InfoCard(QWidget* parent)
    : Card(parent), m_symbol(new SymbolLabel(QString(), 20)),
      m_first(new TextLabel(QString(), 13, TextLabel::primary, QFont::DemiBold)),
      m_second(new TextLabel(QString(), 11, TextLabel::secondary))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(12, 8, 10, 8);
    row->setSpacing(10);
    m_symbol->setFixedSize(28, 28);
    row->addWidget(m_symbol);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addWidget(m_first);
    texts->addWidget(m_second);
    row->addLayout(texts, 1);
    for (QLabel* label : {m_first, m_second})
        label->setMinimumWidth(40);
}

void InfoCard::setSymbol(const QString& symbol)
{
    m_symbol->setSymbol(symbol);
}

void InfoCard::setLines(const QString& first, const QString& second)
{
    m_first->setText(first);
    m_second->setText(second);
}

QString InfoCard::firstLine() const
{
    return m_first->text();
}

QString InfoCard::secondLine() const
{
    return m_second->text();
}

SymbolButton* InfoCard::addButton(const QString& symbol, const QString& hint)
{
    auto* button = new SymbolButton(symbol, hint, 28);
    button->setStyle(SymbolButton::tinted);
    layout()->addWidget(button);
    return button;
}
