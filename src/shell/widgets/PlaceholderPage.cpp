#include "shell/widgets/PlaceholderPage.h"

#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QVBoxLayout>

PlaceholderPage::PlaceholderPage(Page page, const QString& headline, QWidget* parent)
    : QWidget(parent), m_title(new TextLabel(Pages::title(page), 13, TextLabel::secondary, QFont::DemiBold)),
      m_headline(new TextLabel(headline, 18, TextLabel::primary, QFont::DemiBold))
{
    auto* column = new QVBoxLayout(this);
    column->setSpacing(4);
    column->addStretch(1);
    const QString symbol = Pages::tabSymbol(page);
    if (!symbol.isEmpty()) {
        auto* glyph = new SymbolLabel(symbol, 34);
        glyph->setProperty("role", QStringLiteral("secondary"));
        column->addWidget(glyph, 0, Qt::AlignHCenter);
        column->addSpacing(6);
    }
    column->addWidget(m_headline, 0, Qt::AlignHCenter);
    column->addWidget(m_title, 0, Qt::AlignHCenter);
    column->addStretch(1);
}

void PlaceholderPage::setHeadline(const QString& headline)
{
    m_headline->setText(headline);
}

QString PlaceholderPage::titleText() const
{
    return m_title->text();
}
QString PlaceholderPage::headlineText() const
{
    return m_headline->text();
}
