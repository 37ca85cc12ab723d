#include "common/Log.h"

Q_LOGGING_CATEGORY(lcClipboard, "brenlow.clipboard", QtInfoMsg)
Q_LOGGING_CATEGORY(lcSettings, "brenlow.settings", QtInfoMsg)
Q_LOGGING_CATEGORY(lcPanel, "brenlow.panel", QtInfoMsg)
Q_LOGGING_CATEGORY(lcProductivity, "brenlow.productivity", QtInfoMsg)
Q_LOGGING_CATEGORY(lcSetup, "brenlow.setup", QtInfoMsg)
Q_LOGGING_CATEGORY(lcPlatform, "brenlow.platform", QtInfoMsg)
