#pragma once

#include <QWidget>

class Model;
class QLabel;
class QPushButton;
class SymbolButton;

// The overview in one row: song, focus timer, search and the way back to the full overview.
class MiniOverview : public QWidget
{
    Q_OBJECT
public:
    explicit MiniOverview(Model& model, QWidget* parent = nullptr);

    QPushButton* timerButton() const { return m_timer; }
    SymbolButton* searchButton() const { return m_search; }
    SymbolButton* expandButton() const { return m_expand; }
    QString songText() const;
    QString statusText() const;

private:
    void sync();

    Model& m_model;
    QLabel* m_song;
    QLabel* m_status;
    QPushButton* m_timer;
    SymbolButton* m_search;
    SymbolButton* m_expand;
};
