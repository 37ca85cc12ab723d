#include "setup/widgets/LoginItemSettings.h"

#include "setup/LoginItemStore.h"
#include "setup/LoginItemTexts.h"
#include "ui/Divider.h"
#include "ui/PanelTheme.h"
#include "ui/TextLabel.h"
#include "ui/ToggleRow.h"

#include <QPushButton>
#include <QVBoxLayout>

LoginItemSettings::LoginItemSettings(LoginItemStore& store, QWidget* parent)
    : QWidget(parent), m_store(store), m_toggle(new ToggleRow(LoginItemTexts::switchTitle())),
      m_status((new TextLabel({}, 11, TextLabel::secondary))->wrapping()),
      m_error((new TextLabel({}, 11, TextLabel::secondary))->wrapping()),
      m_settings(new QPushButton(PanelTheme::buttonText(LoginItemTexts::openSettings())))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(new Divider);
    column->addWidget(m_toggle);
    column->addWidget(m_status);
    column->addWidget(m_error);
    column->addWidget(m_settings, 0, Qt::AlignLeft);
    m_settings->setCursor(Qt::PointingHandCursor);

    connect(m_toggle, &ToggleRow::toggled, &store, &LoginItemStore::setEnabled);
    connect(m_settings, &QPushButton::clicked, this, &LoginItemSettings::openSettingsRequested);
    connect(&store, &LoginItemStore::statusChanged, this, &LoginItemSettings::sync);
    connect(&store, &LoginItemStore::errorMessageChanged, this, &LoginItemSettings::sync);
    sync();
}

void LoginItemSettings::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_store.refresh();
}

void LoginItemSettings::sync()
{
    m_toggle->setState(m_store.enabled());
    m_status->setText(LoginItemTexts::statusLine(m_store.status()));
    m_error->setText(m_store.errorMessage());
    m_error->setVisible(!m_store.errorMessage().isEmpty());
    m_settings->setVisible(
        LoginItemTexts::offersSettings(m_store.status(), !m_store.errorMessage().isEmpty()));
}

QString LoginItemSettings::statusText() const
{
    return m_status->text();
}

QString LoginItemSettings::errorText() const
{
    return m_error->isHidden() ? QString() : m_error->text();
}
