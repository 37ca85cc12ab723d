#include "app/AppDelegate.h"

#include "model/Model.h"

AppDelegate::AppDelegate(Defaults& defaults, Platform platform, QObject* parent)
    : QObject(parent)
    , m_platform(platform)
    , m_model(std::make_unique<Model>(defaults, platform, true, platform.pasteboard))
{
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::launch() {}
void AppDelegate::terminate() {}
void AppDelegate::reopen() { expand(std::nullopt, false); }
void AppDelegate::expand(std::optional<Page>, bool) {}
void AppDelegate::collapse() {}
void AppDelegate::toggle() {}
void AppDelegate::pollPointer() {}
void AppDelegate::reposition() {}
void AppDelegate::configureShortcut() {}
void AppDelegate::welcome(bool) {}
