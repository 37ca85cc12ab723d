#pragma once

#include "productivity/DeviceSearch.h"

#include <QWidget>

class QAbstractButton;
class QLineEdit;
class QPushButton;
class QVBoxLayout;
class SegmentedControl;
class TextLabel;

// The "Suche" page: the search field, the scope, the results with their actions, the status.
class SearchPage : public QWidget
{
    Q_OBJECT
public:
    explicit SearchPage(DeviceSearch& search, QWidget* parent = nullptr);

    QLineEdit* field() const { return m_field; }
    SegmentedControl* scope() const { return m_scope; }
    // The names of the rows shown, in order.
    QStringList rowNames() const;
    // The button of a row with that text (the name opens the item).
    QAbstractButton* rowButton(int row, const QString& text) const;
    QString statusText() const;

Q_SIGNALS:
    void openRequested(const QUrl& url);
    void revealRequested(const QUrl& url);
    void addRequested(const QUrl& url);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void rebuild();
    QWidget* makeRow(const SearchResult& result);
    DeviceSearch::Scope currentScope() const;

    DeviceSearch& m_search;
    QLineEdit* m_field;
    SegmentedControl* m_scope;
    QVBoxLayout* m_rows;
    TextLabel* m_status;
};
