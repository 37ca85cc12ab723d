#include "platform/linux/LinuxFileSearch.h"

#include "common/Log.h"

#include <QDBusConnectionInterface>
#include <QStandardPaths>
#include <QUrl>

#include <libtracker-sparql/tracker-sparql.h>

namespace {

// The text is bound as a parameter, never written into the query.
QByteArray nameQuery(int limit)
{
    return QByteArrayLiteral("SELECT DISTINCT ?u WHERE { ?u a nfo:FileDataObject ; nfo:fileName ?n . "
                             "FILTER(CONTAINS(LCASE(?n), LCASE(~term))) } LIMIT ") +
           QByteArray::number(std::max(1, limit));
}

} // namespace

// The connection lives on the queue's thread only; it is made when first needed and dropped
// when the miner is gone, so a miner started later is found.
class LinuxFileSearch::Index
{
public:
    ~Index() { drop(); }

    std::optional<QStringList> find(const QString& text, int limit)
    {
        if (!m_connection && !connect())
            return std::nullopt;
        GError* error = nullptr;
        TrackerSparqlStatement* statement = tracker_sparql_connection_query_statement(
            m_connection, nameQuery(limit).constData(), nullptr, &error);
        if (!statement)
            return failed("prepare", error);
        const QByteArray term = text.toUtf8();
        tracker_sparql_statement_bind_string(statement, "term", term.constData());
        TrackerSparqlCursor* cursor = tracker_sparql_statement_execute(statement, nullptr, &error);
        g_object_unref(statement);
        if (!cursor)
            return failed("query", error);
        QStringList paths;
        while (tracker_sparql_cursor_next(cursor, nullptr, &error)) {
            const QUrl url(QString::fromUtf8(tracker_sparql_cursor_get_string(cursor, 0, nullptr)));
            if (url.isLocalFile())
                paths.append(url.toLocalFile());
        }
        g_object_unref(cursor);
        if (error)
            return failed("read", error);
        return paths;
    }

    QDBusConnection* bus = nullptr;

private:
    bool connect()
    {
        // Asking by name would start the miner through D-Bus activation: only a running one counts.
        QDBusConnectionInterface* names = bus->interface();
        if (!names || !names->isServiceRegistered(QString::fromLatin1(minerService)).value())
            return false;
        GError* error = nullptr;
        m_connection = tracker_sparql_connection_bus_new(minerService, nullptr, nullptr, &error);
        if (!m_connection) {
            qCInfo(lcPlatform) << "file index not reachable:" << (error ? error->message : "");
            g_clear_error(&error);
            return false;
        }
        return true;
    }

    std::optional<QStringList> failed(const char* step, GError* error)
    {
        qCInfo(lcPlatform) << "file index" << step << "failed:" << (error ? error->message : "");
        g_clear_error(&error);
        drop();
        return std::nullopt;
    }

    void drop()
    {
        if (m_connection)
            g_object_unref(m_connection);
        m_connection = nullptr;
    }

    TrackerSparqlConnection* m_connection = nullptr;
};

LinuxFileSearch::LinuxFileSearch(QDBusConnection bus)
    : m_bus(std::move(bus)), m_index(std::make_shared<Index>())
{
    m_index->bus = &m_bus;
}

LinuxFileSearch::~LinuxFileSearch() = default;

void LinuxFileSearch::findByName(const QString& text, int limit, QObject* context, Answer answer)
{
    std::shared_ptr<Index> index = m_index;
    m_queue.run<std::optional<QStringList>>(
        context, [index, text, limit] { return index->find(text, limit); },
        [answer = std::move(answer)](std::optional<QStringList> paths) { answer(std::move(paths)); });
}

QStringList LinuxFileSearch::applicationFolders() const
{
    return QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
}

QStringList LinuxFileSearch::defaultAppFolders() const
{
    // Where mimeapps.list may live, in the desktop's order of precedence.
    return QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation) +
           QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
}
