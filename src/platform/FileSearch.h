#pragma once

#include <QObject>
#include <QStringList>

#include <functional>
#include <optional>

// The desktop's file index and where its applications are described. Answers come later, on the
// main thread.
class FileSearch
{
public:
    // The matching paths, or nothing when the index could not be asked.
    using Answer = std::function<void(std::optional<QStringList>)>;

    virtual ~FileSearch() = default;
    // Asks the index for files whose name contains `text` (ignoring case), at most `limit` of
    // them; `answer` runs once unless `context` is gone by then. A newer query does not cancel an
    // older one: callers drop answers they no longer want.
    virtual void findByName(const QString& text, int limit, QObject* context, Answer answer) = 0;
    // The folders holding the desktop entries of installed applications, most important first.
    virtual QStringList applicationFolders() const = 0;
    // The folders holding the desktop's default-application choices (mimeapps.list), most
    // important first.
    virtual QStringList defaultAppFolders() const = 0;
};
