#include "productivity/SearchOrder.h"

#include <QCollator>

namespace {

// Qt's collator compares numbers by value only when it is built with ICU; Debian's is not, so
// the digit runs are compared here and only the text between them goes to the collator.
QStringView run(QStringView text, qsizetype from)
{
    const bool digits = text[from].isDigit();
    qsizetype end = from;
    while (end < text.size() && text[end].isDigit() == digits)
        ++end;
    return text.mid(from, end - from);
}

int compareNumbers(QStringView a, QStringView b)
{
    while (a.size() > 1 && a.front() == u'0')
        a = a.mid(1);
    while (b.size() > 1 && b.front() == u'0')
        b = b.mid(1);
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    return a.compare(b);
}

} // namespace

int SearchOrder::compare(const QString& a, const QString& b)
{
    thread_local const QCollator collator = [] {
        QCollator made;
        made.setCaseSensitivity(Qt::CaseInsensitive);
        return made;
    }();
    qsizetype i = 0;
    qsizetype j = 0;
    while (i < a.size() && j < b.size()) {
        const QStringView left = run(a, i);
        const QStringView right = run(b, j);
        const bool numbers = left.front().isDigit() && right.front().isDigit();
        const int order = numbers ? compareNumbers(left, right) : collator.compare(left, right);
        if (order != 0)
            return order;
        i += left.size();
        j += right.size();
    }
    if (i < a.size() || j < b.size())
        return i < a.size() ? 1 : -1;
    return collator.compare(a, b);
}
