#pragma once

#include <QString>

// The commands page's status line after a read, from the accessibility error and the item count.
namespace CommandAccess {
QString message(int error, qsizetype count);
} // namespace CommandAccess
