#pragma once

#include "clipboard/Clip.h"
#include "clipboard/ClipStore.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

class ClipboardArchive;
class Clock;
class Defaults;
class Pasteboard;
class Productivity;

// The clipboard history ("Verlauf"): captures what is copied anywhere, keeps it in the SQLite
// archive, and puts an entry back on the clipboard. Newest first, no two entries with the same
// text, no automatic limit. Main thread only.
class ClipboardHistory : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool recording READ recording WRITE setRecording NOTIFY recordingChanged)
    Q_PROPERTY(QString historyStorageError READ historyStorageError NOTIFY historyStorageErrorChanged)
public:
    static constexpr qint64 largestClipBytes = 99'999;
    static constexpr const char* recordingKey = "recording";

    // Opens the archive at `historyPath` (with none: in memory) and loads it; favourites that the
    // history lost come back as entries. A file that cannot be read is never written in this run.
    ClipboardHistory(Defaults& defaults, Pasteboard& clipboard, Clock& clock, Productivity& productivity,
                     const std::optional<QString>& historyPath, QObject* parent = nullptr);
    ~ClipboardHistory() override;

    // The entries, packed; views read them by slot.
    const ClipStore& store() const { return m_store; }
    // Every entry as a plain clip, newest first: a copy of every text, for small histories.
    QList<Clip> clips() const { return m_store.toList(); }
    bool recording() const { return m_recording; }
    void setRecording(bool recording);
    const QString& historyStorageError() const { return m_historyStorageError; }
    ClipboardArchive* archive() const { return m_archive.get(); }

    // Copies that the archive refused (locked, read-only, full), newest first, one per text. They
    // join the list once they are saved; the heartbeat tries again.
    const QList<Clip>& unsavedClips() const { return m_unsaved; }
    static constexpr int retryIntervalSeconds = 2;

    // Captures at once when the clipboard reports a change, besides the heartbeat.
    void watchClipboard();
    // One capture step: a changed clipboard with a usable text goes to the top.
    void pollClipboard();
    // Removes the entry's text everywhere, its favourite included.
    void deleteClip(const Clip& clip);
    // Removes every entry and every favourite.
    void clearHistory();
    // Puts the entry back on the clipboard without capturing it again.
    void copyBack(const Clip& clip);

Q_SIGNALS:
    // After every change of the list; the finer signals below say what changed.
    void clipsChanged();
    // A new entry at index 0.
    void clipInserted();
    // The entry at `from` moved to index 0 with a new date.
    void clipMoved(int from);
    // The entry in this slot left the list (the slot may be reused afterwards).
    void clipRemoved(quint32 slot);
    // The whole list was replaced (loading, clearing).
    void clipsReset();
    void recordingChanged();
    void historyStorageErrorChanged();
    // An entry went back on the clipboard; the panel closes for the user's paste.
    void copiedBack();

private:
    void open(const std::optional<QString>& historyPath);
    // Saves the clip; on success it goes to the top of the list. Answers whether it was saved.
    bool store(const Clip& clip);
    void keepUnsaved(const Clip& clip);
    void retryUnsaved();
    void setHistoryStorageError(const QString& error);

    Defaults& m_defaults;
    Pasteboard& m_clipboard;
    Clock& m_clock;
    Productivity& m_productivity;
    std::unique_ptr<ClipboardArchive> m_archive;
    ClipStore m_store;
    QString m_historyStorageError;
    bool m_recording = true;
    qint64 m_pasteCount = 0;
    QList<Clip> m_unsaved;
    QDateTime m_nextRetry;
    bool m_reopenBeforeRetry = false;
    bool m_watching = false;
};
