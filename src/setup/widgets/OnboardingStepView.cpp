#include "setup/widgets/OnboardingStepView.h"

#include "ui/Card.h"
#include "ui/PanelTheme.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace {

QWidget* tipCard(const OnboardingTexts::Tip& tip)
{
    auto* card = new Card;
    auto* row = new QHBoxLayout(card);
    row->setContentsMargins(12, 9, 12, 9);
    row->setSpacing(10);
    auto* glyph = new SymbolLabel(tip.symbol, 18);
    glyph->setStyleSheet(QStringLiteral("color: %1;").arg(PanelTheme::accent().name()));
    glyph->setFixedWidth(24);
    row->addWidget(glyph, 0, Qt::AlignTop);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(new TextLabel(tip.title, 13, TextLabel::primary, QFont::DemiBold));
    texts->addWidget((new TextLabel(tip.text, 12, TextLabel::secondary))->wrapping());
    row->addLayout(texts, 1);
    return card;
}

QWidget* stateRow(bool granted, const QString& text)
{
    auto* widget = new QWidget;
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    auto* glyph = new SymbolLabel(
        granted ? QStringLiteral("checkmark.circle.fill") : QStringLiteral("hand.raised"), 16);
    const QColor tone = granted ? QColor(48, 209, 88) : PanelTheme::active();
    glyph->setStyleSheet(QStringLiteral("color: %1;").arg(tone.name()));
    row->addWidget(glyph);
    row->addWidget(new TextLabel(text, 13, TextLabel::primary, QFont::DemiBold));
    row->addStretch(1);
    return widget;
}

} // namespace

OnboardingStepView::OnboardingStepView(const OnboardingTexts::Content& content, QWidget* parent)
    : QWidget(parent)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(9);
    if (!content.symbol.isEmpty()) {
        auto* symbol = new SymbolLabel(content.symbol, 38);
        symbol->setStyleSheet(QStringLiteral("color: %1;").arg(PanelTheme::accent().name()));
        column->addWidget(symbol, 0, Qt::AlignLeft);
    }
    if (content.granted)
        column->addWidget(stateRow(*content.granted, content.state));
    if (!content.lead.isEmpty())
        column->addWidget((new TextLabel(content.lead, 15, TextLabel::primary, QFont::DemiBold))->wrapping());
    for (const QString& paragraph : content.paragraphs)
        column->addWidget((new TextLabel(paragraph, 12, TextLabel::secondary))->wrapping());
    for (const OnboardingTexts::Tip& tip : content.tips)
        column->addWidget(tipCard(tip));
    if (!content.note.isEmpty())
        column->addWidget((new TextLabel(content.note, 11, TextLabel::secondary))->wrapping());
    column->addStretch(1);
}
