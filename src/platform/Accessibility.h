#pragma once

#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

#include <functional>

// One element of another application's accessibility tree. Opaque to the rules: the service
// that owns it, its object path there and the time-out its calls get.
struct AXElement
{
    QString service;
    QString path;
    // How long one call on this element may take before it counts as unanswered.
    int timeoutMs = 6000;

    bool isNull() const { return service.isEmpty() || path.isEmpty(); }
    // The same element with another time-out for its calls.
    AXElement withTimeout(double seconds) const
    {
        AXElement copy = *this;
        copy.timeoutMs = qMax(1, int(seconds * 1000));
        return copy;
    }
    friend bool operator==(const AXElement& a, const AXElement& b)
    {
        return a.service == b.service && a.path == b.path;
    }
};
Q_DECLARE_METATYPE(AXElement)
using AXElementList = QList<AXElement>;
Q_DECLARE_METATYPE(AXElementList)

// The accessibility interface's error codes; the status texts quote them.
namespace AXError {
constexpr int success = 0;
constexpr int failure = -25200;
constexpr int invalidElement = -25202;
constexpr int cannotComplete = -25204;
constexpr int attributeUnsupported = -25205;
constexpr int actionUnsupported = -25206;
constexpr int apiDisabled = -25211;
constexpr int noValue = -25212;
} // namespace AXError

// Reading and operating other applications' menus. Every call may block for its element's
// time-out: for worker threads only. Attribute names are the interface's own ("AXMenuBar",
// "AXTitle", "AXChildren", "AXMenuItemCmdChar", "AXMenuItemCmdModifiers", "AXEnabled").
class Accessibility
{
public:
    virtual ~Accessibility() = default;
    // The application element of a process; a null element when nothing answers for it.
    virtual AXElement applicationElement(qint64 pid) = 0;
    // Copies an attribute into `value`: text, integer, boolean, an AXElement or an AXElementList.
    virtual int copyAttribute(const AXElement& element, const QString& attribute, QVariant& value) = 0;
    // Several attributes of several elements: one map per element, in order, without the
    // attributes that could not be read. Nothing more is read once `stop` answers true. The
    // default reads one attribute after another; an implementation may overlap its calls.
    virtual QList<QVariantMap> copyAttributes(const AXElementList& elements, const QStringList& attributes,
                                              const std::function<bool()>& stop)
    {
        QList<QVariantMap> values(elements.size());
        for (qsizetype i = 0; i < elements.size(); ++i) {
            for (const QString& attribute : attributes) {
                if (stop())
                    return values;
                QVariant value;
                if (copyAttribute(elements.at(i), attribute, value) == AXError::success)
                    values[i].insert(attribute, value);
            }
        }
        return values;
    }
    // The process that owns the element.
    virtual int processId(const AXElement& element, qint64& pid) = 0;
    // The names of the element's actions ("AXPress" for a press or click).
    virtual int actionNames(const AXElement& element, QStringList& names) = 0;
    // Performs an action by name.
    virtual int perform(const AXElement& element, const QString& action) = 0;
};
