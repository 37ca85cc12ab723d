#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <optional>

// The history's kinds and filters, in the order of the filter chips. A clip's kind is never
// stored: it follows from the text every time.
enum class ClipKind { all, pinned, text, links, emails, phones, numbers, paths, colors, code };

namespace ClipKinds {

// Every case in chip order.
const QList<ClipKind>& allCases();
// The German label, which is also the kind's raw value.
QString label(ClipKind kind);
// The kind with this label; an unknown label gives none.
std::optional<ClipKind> fromLabel(QStringView label);

// The kind of a text (never `all` or `pinned`); the first recogniser that claims the trimmed
// text decides: link, e-mail, path, colour, phone, number, code, else text.
ClipKind classify(QStringView text);
// Whether a row with this text (and pinned state) passes `filter`.
bool matches(ClipKind filter, QStringView text, bool pinned);
// The same for a row whose kind is already known.
bool matchesKind(ClipKind filter, ClipKind kind, bool pinned);

} // namespace ClipKinds
