#pragma once

#include <QString>

class QPushButton;

namespace PageButton {

// A text button of the productivity pages; `kind` is the theme's "primary", "plain", "chip" or
// empty for the standard look.
QPushButton* make(const QString& text, const QString& kind = {});

} // namespace PageButton
