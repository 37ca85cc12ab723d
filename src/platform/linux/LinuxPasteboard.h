#pragma once

#include "platform/Pasteboard.h"

#include <QClipboard>
#include <QPointer>

class QMimeData;

// The X11 CLIPBOARD selection through QClipboard. The change count rises on every change of
// the selection and on our own writes, synchronously inside clearAndWriteString; Qt's
// notification of our own write is not counted again. Content marked by a password manager
// (x-kde-passwordManagerHint, or the macOS marker types under their MIME names) reports the
// concealed type and is never read.
class LinuxPasteboard final : public Pasteboard
{
    Q_OBJECT
public:
    // The MIME type that password managers on Linux add to a secret (KeePassXC and 1Password
    // write "secret", QtPass writes "1"); any value marks the content as concealed.
    static QString passwordManagerHint() { return QStringLiteral("x-kde-passwordManagerHint"); }

    // `clipboard`: the application's clipboard (QGuiApplication::clipboard()).
    explicit LinuxPasteboard(QClipboard* clipboard, QObject* parent = nullptr);

    qint64 changeCount() const override { return m_changeCount; }
    QStringList types() const override;
    std::optional<QString> string() const override;
    void clearAndWriteString(const QString& text) override;

    // The pasteboard types that a content with these MIME formats offers.
    static QStringList typesForFormats(const QStringList& formats);

private:
    void clipboardChanged(QClipboard::Mode mode);
    const QMimeData* content() const;

    QPointer<QClipboard> m_clipboard;
    qint64 m_changeCount = 0;
    bool m_writing = false;
};
