#pragma once

#include "common/Scheduler.h"
#include "common/SerialQueue.h"
#include "productivity/AppCatalog.h"

#include <QList>
#include <QObject>
#include <QUrl>

class FileSearch;

// One line of the search: an application (its desktop entry) or a file.
struct SearchResult
{
    QString path;
    QString name;
    bool application = false;

    QUrl url() const { return QUrl::fromLocalFile(path); }
    bool operator==(const SearchResult&) const = default;
};

// The search behind the "Suche" page: applications match at once as the user types, files come
// from the desktop's file index a quarter of a second after the last keystroke. Applications
// always come first. Answers of superseded queries are dropped. Main thread only.
class DeviceSearch : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(bool searching READ searching NOTIFY searchingChanged)
    Q_PROPERTY(QString status READ status NOTIFY statusChanged)
public:
    static constexpr double debounce = 0.25;
    static constexpr int examined = 300;
    static constexpr int kept = 80;
    // An index that has not answered by then counts as not available for this query.
    static constexpr double patience = 5.0;

    // Starts reading the installed applications on the "Brenlow.apps" queue.
    DeviceSearch(FileSearch& files, Scheduler& scheduler, QObject* parent = nullptr);

    const QString& text() const { return m_text; }
    void setText(const QString& text);
    const QList<SearchResult>& results() const { return m_results; }
    bool searching() const { return m_searching; }
    const QString& status() const { return m_status; }
    bool appsReady() const { return m_appsReady; }
    const QList<InstalledApp>& installed() const { return m_installed; }

    // Called on every change of the text.
    void schedule();
    // Forgets the running query: its answer, when it comes, is dropped.
    void stop();

    // The answer's rules, for a query and the index's paths: the matching applications first,
    // then the files that exist outside application bundles and Library folders, at most `kept`.
    enum class Scope { all, apps, files };
    // What a scope of the page shows: everything, only applications, or only files.
    static QList<SearchResult> filtered(const QList<SearchResult>& results, Scope scope);
    static QList<SearchResult> combine(const QList<InstalledApp>& apps, const QString& query,
                                       const QStringList& paths);

Q_SIGNALS:
    void textChanged();
    void resultsChanged();
    void searchingChanged();
    void statusChanged();
    void appsLoaded();

private:
    void start(const QString& query);
    void update(quint64 generation, const QString& query, const std::optional<QStringList>& paths);
    void showApps(const QString& query);
    void setResults(QList<SearchResult> results);
    void setSearching(bool searching);
    void setStatus(const QString& status);

    FileSearch& m_files;
    QString m_text;
    QList<SearchResult> m_results;
    bool m_searching = false;
    QString m_status;
    QList<InstalledApp> m_installed;
    bool m_appsReady = false;
    // Every schedule() starts a new generation; answers of an older one are stale.
    quint64 m_generation = 0;
    ScheduledWork m_pending;
    ScheduledWork m_timeout;
    SerialQueue m_queue{QStringLiteral("Brenlow.apps")};
};
