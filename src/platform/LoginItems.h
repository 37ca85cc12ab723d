#pragma once

#include <QString>

#include <optional>

// The system's state of "start at login" for this program, in the order the store stores it.
enum class LoginItemStatus {
    notRegistered,
    enabled,
    requiresApproval, // registered, but a desktop setting keeps it from starting
    notFound,         // registered for a program that is not where the entry points
};

// The desktop's autostart for this program.
class LoginItems
{
public:
    virtual ~LoginItems() = default;
    virtual LoginItemStatus status() const = 0;
    // Both answer the system's description of a failure, nothing on success.
    virtual std::optional<QString> registerItem() = 0;
    virtual std::optional<QString> unregisterItem() = 0;
    // Puts the program into the desktop's launcher (a desktop entry and its icon) where it is
    // missing or points elsewhere; the failure's text.
    virtual std::optional<QString> installLauncher() = 0;
};
