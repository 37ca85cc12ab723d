#pragma once

#include <QWidget>

class Preferences;
class StatusMessage;
class QLabel;

// The status line under the page: the model's message or the shortcuts, and the product name.
class StatusLineView : public QWidget
{
    Q_OBJECT
public:
    StatusLineView(const StatusMessage& message, const Preferences& preferences, QWidget* parent = nullptr);

    QString text() const;
    QString trailingText() const;

private:
    void sync();

    const StatusMessage& m_message;
    const Preferences& m_preferences;
    QLabel* m_text;
    QLabel* m_trailing;
};
