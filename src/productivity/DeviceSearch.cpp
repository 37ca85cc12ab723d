#include "productivity/DeviceSearch.h"

#include "common/Log.h"
#include "platform/FileSearch.h"
#include "productivity/DesktopEntry.h"
#include "productivity/SearchOrder.h"
#include "productivity/SearchTexts.h"

#include <QFileInfo>
#include <QSet>

namespace {

// No file name on Linux is longer than 255 bytes, so a longer query cannot name one.
constexpr qsizetype longestFileName = 255;

QList<SearchResult> appResults(const QList<InstalledApp>& apps, const QString& query)
{
    QList<SearchResult> results;
    for (const InstalledApp& app : AppCatalog::matching(apps, query))
        results.append(SearchResult{app.path, app.name, true});
    return results;
}

bool insideAppOrLibrary(const QString& path)
{
    return path.contains(u".app/") || path.contains(u"/Library/");
}

} // namespace

DeviceSearch::DeviceSearch(FileSearch& files, Scheduler& scheduler, QObject* parent)
    : QObject(parent), m_files(files), m_status(SearchTexts::idle()), m_pending(scheduler, this),
      m_timeout(scheduler, this)
{
    const QStringList folders = files.applicationFolders();
    const QStringList languages = DesktopEntry::userLanguages();
    m_queue.run<QList<InstalledApp>>(
        this, [folders, languages] { return AppCatalog::scan(folders, languages); },
        [this](QList<InstalledApp> apps) {
            m_installed = std::move(apps);
            m_appsReady = true;
            qCDebug(lcProductivity) << "applications found:" << m_installed.size();
            // Someone typed before the list was there: the applications join what is shown.
            const QString query = m_text.trimmed();
            if (!query.isEmpty()) {
                QList<SearchResult> merged = appResults(m_installed, query);
                for (const SearchResult& result : std::as_const(m_results)) {
                    if (!result.application && merged.size() < kept)
                        merged.append(result);
                }
                setResults(merged);
            }
            Q_EMIT appsLoaded();
        });
}

void DeviceSearch::setText(const QString& text)
{
    if (m_text == text)
        return;
    m_text = text;
    Q_EMIT textChanged();
    schedule();
}

void DeviceSearch::schedule()
{
    m_pending.cancel();
    stop();
    setResults({});
    setSearching(false);
    const QString query = m_text.trimmed();
    if (query.isEmpty()) {
        setStatus(SearchTexts::idle());
        return;
    }
    setResults(appResults(m_installed, query));
    setSearching(true);
    setStatus(SearchTexts::searching());
    m_pending.schedule(debounce, [this, query] { start(query); });
}

void DeviceSearch::stop()
{
    ++m_generation;
    m_timeout.cancel();
}

void DeviceSearch::start(const QString& query)
{
    const quint64 generation = m_generation;
    if (query.toUtf8().size() > longestFileName) {
        update(generation, query, QStringList());
        return;
    }
    m_files.findByName(query, examined, this, [this, generation, query](std::optional<QStringList> paths) {
        update(generation, query, paths);
    });
    m_timeout.schedule(patience, [this, generation, query] {
        qCInfo(lcProductivity) << "the file index did not answer in time";
        update(generation, query, std::nullopt);
        ++m_generation;
    });
}

void DeviceSearch::update(quint64 generation, const QString& query, const std::optional<QStringList>& paths)
{
    if (generation != m_generation)
        return;
    m_timeout.cancel();
    setSearching(false);
    if (!paths) {
        setStatus(SearchTexts::unavailable());
        return;
    }
    const QList<SearchResult> results = combine(m_installed, query, *paths);
    setResults(results);
    setStatus(results.isEmpty() ? SearchTexts::noResults() : SearchTexts::results(int(results.size())));
}

QList<SearchResult> DeviceSearch::combine(const QList<InstalledApp>& apps, const QString& query,
                                          const QStringList& paths)
{
    QList<SearchResult> results = appResults(apps, query);
    QSet<QString> listed;
    for (const SearchResult& result : std::as_const(results))
        listed.insert(result.path);
    QList<SearchResult> files;
    for (const QString& path : paths.mid(0, examined)) {
        if (insideAppOrLibrary(path) || listed.contains(path) || !QFileInfo::exists(path))
            continue;
        listed.insert(path);
        files.append(SearchResult{path, QFileInfo(path).fileName(), false});
    }
    SearchOrder::sortByName(files, [](const SearchResult& result) { return result.name; });
    results.append(files);
    return results.mid(0, kept);
}

QList<SearchResult> DeviceSearch::filtered(const QList<SearchResult>& results, Scope scope)
{
    if (scope == Scope::all)
        return results;
    QList<SearchResult> shown;
    for (const SearchResult& result : results) {
        if (result.application == (scope == Scope::apps))
            shown.append(result);
    }
    return shown;
}

void DeviceSearch::setResults(QList<SearchResult> results)
{
    if (m_results == results)
        return;
    m_results = std::move(results);
    Q_EMIT resultsChanged();
}

void DeviceSearch::setSearching(bool searching)
{
    if (m_searching == searching)
        return;
    m_searching = searching;
    Q_EMIT searchingChanged();
}

void DeviceSearch::setStatus(const QString& status)
{
    if (m_status == status)
        return;
    m_status = status;
    Q_EMIT statusChanged();
}
