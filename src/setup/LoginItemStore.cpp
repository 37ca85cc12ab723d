#include "setup/LoginItemStore.h"

#include "common/Log.h"
#include "settings/Defaults.h"
#include "setup/LoginItemTexts.h"

LoginItemStore::LoginItemStore(LoginItems& loginItems, Defaults& defaults, QObject* parent)
    : QObject(parent), m_loginItems(loginItems), m_defaults(defaults), m_status(loginItems.status())
{}

bool LoginItemStore::enabled() const
{
    return m_status == LoginItemStatus::enabled || m_status == LoginItemStatus::requiresApproval;
}

void LoginItemStore::refresh()
{
    const LoginItemStatus status = m_loginItems.status();
    if (status == m_status)
        return;
    m_status = status;
    Q_EMIT statusChanged();
}

void LoginItemStore::configureInitialLaunch()
{
    // The launcher's entry follows the program wherever it runs from; a failure there only costs
    // the launcher icon.
    if (const auto failure = m_loginItems.installLauncher())
        qCInfo(lcSetup) << "the launcher entry was not written:" << *failure;
    refresh();
    if (!m_defaults.boolValue(QString::fromLatin1(configuredKey)).value_or(false))
        setEnabled(true);
}

void LoginItemStore::setEnabled(bool on)
{
    setErrorMessage({});
    refresh();
    std::optional<QString> failure;
    if (on && !enabled())
        failure = m_loginItems.registerItem();
    else if (!on && m_status != LoginItemStatus::notRegistered)
        failure = m_loginItems.unregisterItem();
    if (failure) {
        qCWarning(lcSetup) << "the login item did not change:" << *failure;
        setErrorMessage(LoginItemTexts::changeFailed(*failure));
    } else {
        m_defaults.setBool(QString::fromLatin1(configuredKey), true);
    }
    refresh();
}

void LoginItemStore::setErrorMessage(const QString& message)
{
    if (message == m_errorMessage)
        return;
    m_errorMessage = message;
    Q_EMIT errorMessageChanged();
}
