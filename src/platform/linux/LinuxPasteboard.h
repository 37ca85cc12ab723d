#pragma once

#include "platform/Pasteboard.h"
#include "platform/linux/ClipboardSnapshot.h"

#include <QClipboard>
#include <QPointer>
#include <QThread>

#include <chrono>

class X11ClipboardWatcher;

// The X11 CLIPBOARD selection. Other applications' content is read on a thread of its own
// ("Brenlow.clipboard", see X11ClipboardWatcher) and answers here as a snapshot, so the change
// count, the types and the text never wait for another application. Our own writes go through
// QClipboard; the count rises for them synchronously inside clearAndWriteString and their echo
// from the X server is not counted again. Content marked by a password manager
// (x-kde-passwordManagerHint, or the macOS marker types under their MIME names) reports the
// concealed type and its text is never asked for.
//
// Without X (the offscreen platform of the tests) Qt keeps the clipboard in this process, and it
// is read through QClipboard directly.
class LinuxPasteboard final : public Pasteboard
{
    Q_OBJECT
public:
    // The MIME type that password managers on Linux add to a secret (KeePassXC and 1Password
    // write "secret", QtPass writes "1"); any value marks the content as concealed.
    static QString passwordManagerHint() { return QStringLiteral("x-kde-passwordManagerHint"); }
    // How long one request to another application's clipboard may take.
    static constexpr std::chrono::milliseconds defaultRequestTimeout{500};

    // `clipboard`: the application's clipboard (QGuiApplication::clipboard()).
    explicit LinuxPasteboard(QClipboard* clipboard,
                             std::chrono::milliseconds requestTimeout = defaultRequestTimeout,
                             QObject* parent = nullptr);
    ~LinuxPasteboard() override;

    qint64 changeCount() const override { return m_changeCount; }
    QStringList types() const override { return m_content.types; }
    std::optional<QString> string() const override { return m_content.text; }
    void clearAndWriteString(const QString& text) override;

    // The pasteboard types that a content with these MIME formats offers.
    static QStringList typesForFormats(const QStringList& formats);
    // Answers that came after a newer change had overtaken them and were dropped.
    qint64 overtakenAnswers() const { return m_overtaken; }

Q_SIGNALS:
    // The reading thread watches the clipboard (not at all without X or XFixes).
    void watching();
    // Another application took the clipboard; `changed` follows when its content is read.
    void contentPending();

private:
    void startWatching(std::chrono::milliseconds requestTimeout);
    void contentRead(const ClipboardSnapshot& snapshot);
    void takenByUs();
    void fenced(quint64 write);
    void clipboardChanged(QClipboard::Mode mode);

    QPointer<QClipboard> m_clipboard;
    QThread m_thread;
    X11ClipboardWatcher* m_watcher = nullptr;
    ClipboardSnapshot m_content;
    qint64 m_changeCount = 0;
    // Our writes, and how many of them the reading thread has not seen yet: an answer that
    // arrives meanwhile describes the content we replaced.
    quint64 m_writes = 0;
    quint64 m_unseenWrites = 0;
    qint64 m_overtaken = 0;
    bool m_writing = false;
};
