#include "shell/widgets/ButtonRow.h"

#include "commands/MenuBarApps.h"
#include "commands/MenuCommands.h"
#include "model/Model.h"
#include "model/PanelState.h"
#include "productivity/Productivity.h"
#include "ui/PanelTheme.h"
#include "ui/Symbol.h"
#include "ui/SymbolButton.h"
#include "ui/TextLabel.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>

ButtonRow::ButtonRow(Model& model, QWidget* parent)
    : QWidget(parent), m_model(model), m_title(new TextLabel(QString(), 10, TextLabel::caps)),
      m_headline(new TextLabel(QString(), 16, TextLabel::primary, QFont::DemiBold)), m_more(new QToolButton),
      m_menu(new QMenu(this))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addWidget(m_title);
    texts->addWidget(m_headline);
    m_headline->setMinimumWidth(80);
    row->addLayout(texts, 1);

    for (const HeaderButtons::Entry& entry : HeaderButtons::entries(true)) {
        auto* button = new SymbolButton(entry.symbol, entry.hint, 28);
        m_buttons.insert(entry.action, button);
        row->addWidget(button);
        const HeaderButtons::Action action = entry.action;
        connect(button, &SymbolButton::clicked, this, [this, action] { run(action); });
    }
    m_buttons.value(HeaderButtons::pin)->setCheckable(true);
    // The menu-bar apps' button shows while the integration is on.
    m_buttons.value(HeaderButtons::menuApps)->setVisible(model.menuApps().enabled());
    connect(&model.menuApps(), &MenuBarApps::enabledChanged, this,
            [this] { setMenuAppsEnabled(m_model.menuApps().enabled()); });

    const auto glyphFont = Symbol::font(17);
    m_more->setFont(glyphFont ? *glyphFont : PanelTheme::font(10));
    m_more->setText(Symbol::text(HeaderButtons::menuSymbol(), glyphFont.has_value()));
    m_more->setAutoRaise(true);
    m_more->setPopupMode(QToolButton::InstantPopup);
    m_more->setStyleSheet(QStringLiteral("QToolButton { color: %1; border: none; padding: 2px; }"
                                         "QToolButton::menu-indicator { image: none; width: 0; }")
                              .arg(PanelTheme::secondary().name()));
    m_more->setFixedSize(28, 28);
    m_more->setCursor(Qt::PointingHandCursor);
    m_more->setMenu(m_menu);
    row->addWidget(m_more);
    m_menu->addAction(HeaderButtons::menuSettings(), this, [this] { m_model.setPage(Page::settings); });
    m_menu->addAction(HeaderButtons::menuQuit(), this, [] { QCoreApplication::quit(); });

    connect(&model.panel(), &PanelState::pageChanged, this, &ButtonRow::sync);
    connect(&model.menuCommands(), &MenuCommands::commandAppChanged, this, &ButtonRow::sync);
    connect(&model.panel(), &PanelState::panelPinnedChanged, this, &ButtonRow::sync);
    sync();
}

void ButtonRow::setMenuAppsEnabled(bool enabled)
{
    m_buttons.value(HeaderButtons::menuApps)->setVisible(enabled);
}

QList<SymbolButton*> ButtonRow::visibleButtons() const
{
    QList<SymbolButton*> visible;
    for (const HeaderButtons::Entry& entry : HeaderButtons::entries(true)) {
        SymbolButton* button = m_buttons.value(entry.action);
        if (!button->isHidden())
            visible.append(button);
    }
    return visible;
}

QString ButtonRow::title() const
{
    return m_title->text();
}
QString ButtonRow::headline() const
{
    return m_headline->text();
}

void ButtonRow::run(HeaderButtons::Action action)
{
    switch (action) {
    case HeaderButtons::pin:
        m_model.setPanelPinned(!m_model.panelPinned());
        sync();
        break;
    case HeaderButtons::menuApps:
        Q_EMIT menuAppsRequested();
        m_model.setPage(Page::menuApps);
        break;
    case HeaderButtons::capture:
        m_model.setPage(Page::capture);
        break;
    case HeaderButtons::settings:
        m_model.setPage(Page::settings);
        break;
    case HeaderButtons::mini:
        // Mini first, so the page change resizes the panel to the small frame.
        m_model.productivity().setMini(true);
        m_model.setPage(Page::home);
        break;
    case HeaderButtons::close:
        Q_EMIT m_model.close();
        break;
    }
}

void ButtonRow::sync()
{
    const Page page = m_model.page();
    m_title->setText(Pages::title(page).toUpper());
    m_headline->setText(Pages::headline(page, m_model.menuCommands().commandApp()));
    m_buttons.value(HeaderButtons::pin)->setChecked(m_model.panelPinned());
}
