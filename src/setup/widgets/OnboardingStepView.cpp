#include "setup/widgets/OnboardingStepView.h"

#include "setup/PermissionTexts.h"
#include "ui/Card.h"
#include "ui/FlowLayout.h"
#include "ui/PanelTheme.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QPushButton>
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

QWidget* stateRow(bool granted, const QString& symbol, const QString& title, const QString& text)
{
    auto* widget = new QWidget;
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    auto* glyph = new SymbolLabel(symbol, 16);
    const QColor tone = granted ? QColor(48, 209, 88) : PanelTheme::active();
    glyph->setStyleSheet(QStringLiteral("color: %1;").arg(tone.name()));
    row->addWidget(glyph);
    row->addWidget(new TextLabel(title, 13, TextLabel::primary, QFont::DemiBold));
    if (!text.isEmpty())
        row->addWidget(new TextLabel(text, 12, TextLabel::secondary));
    row->addStretch(1);
    return widget;
}

QPushButton* stepButton(const QString& text)
{
    auto* button = new QPushButton(PanelTheme::buttonText(text));
    button->setCursor(Qt::PointingHandCursor);
    button->setFont(PanelTheme::font(12));
    button->setFocusPolicy(Qt::NoFocus);
    return button;
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
    if (content.granted) {
        const QString symbol =
            *content.granted ? QStringLiteral("checkmark.circle.fill") : QStringLiteral("hand.raised");
        column->addWidget(stateRow(*content.granted, symbol, content.state, QString()));
    }
    for (const OnboardingTexts::AutomationRow& row : content.automation)
        column->addWidget(stateRow(row.allowed, row.symbol, row.title, row.text));
    if (!content.lead.isEmpty())
        column->addWidget((new TextLabel(content.lead, 15, TextLabel::primary, QFont::DemiBold))->wrapping());
    for (const QString& paragraph : content.paragraphs)
        column->addWidget((new TextLabel(paragraph, 12, TextLabel::secondary))->wrapping());
    if (!content.buttons.isEmpty()) {
        auto* buttons = new QWidget;
        auto* flow = new FlowLayout(buttons, 6);
        for (const OnboardingTexts::Button& entry : content.buttons) {
            QPushButton* button = stepButton(entry.label);
            const OnboardingTexts::Action action = entry.action;
            connect(button, &QPushButton::clicked, this, [this, action] { Q_EMIT actionTriggered(action); });
            flow->addWidget(button);
        }
        column->addWidget(buttons);
    }
    if (content.refreshRow)
        column->addWidget(refreshRow(content.restartNote));
    for (const OnboardingTexts::Tip& tip : content.tips)
        column->addWidget(tipCard(tip));
    if (!content.note.isEmpty())
        column->addWidget((new TextLabel(content.note, 11, TextLabel::secondary))->wrapping());
    column->addStretch(1);
}

QWidget* OnboardingStepView::refreshRow(bool restartNote)
{
    auto* widget = new QWidget;
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    m_recheck = stepButton(PermissionTexts::recheck());
    // Wide enough for both of its texts, so it does not jump while a check runs.
    const QFontMetrics metrics(m_recheck->font());
    m_recheck->setMinimumWidth(std::max(metrics.horizontalAdvance(PermissionTexts::recheck()),
                                        metrics.horizontalAdvance(PermissionTexts::checking())) +
                               28);
    connect(m_recheck, &QPushButton::clicked, this, &OnboardingStepView::recheckRequested);
    column->addWidget(m_recheck, 0, Qt::AlignLeft);
    if (!restartNote)
        return widget;

    column->addWidget((new TextLabel(PermissionTexts::restartNote(), 11, TextLabel::secondary))->wrapping());
    auto* restartRow = new QHBoxLayout;
    restartRow->setSpacing(8);
    QPushButton* restart = stepButton(PermissionTexts::restart());
    restart->setToolTip(PermissionTexts::restartHelp());
    connect(restart, &QPushButton::clicked, this, &OnboardingStepView::restartRequested);
    restartRow->addWidget(restart);
    restartRow->addStretch(1);
    column->addLayout(restartRow);
    return widget;
}

QPushButton* OnboardingStepView::button(const QString& text) const
{
    for (QPushButton* button : findChildren<QPushButton*>()) {
        if (button->text() == PanelTheme::buttonText(text))
            return button;
    }
    return nullptr;
}

void OnboardingStepView::setChecking(bool checking)
{
    if (!m_recheck)
        return;
    m_recheck->setText(checking ? PermissionTexts::checking() : PermissionTexts::recheck());
    m_recheck->setEnabled(!checking);
}
