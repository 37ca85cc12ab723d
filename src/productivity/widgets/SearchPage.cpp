#include "productivity/widgets/SearchPage.h"

#include "productivity/SearchTexts.h"
#include "productivity/widgets/PageButton.h"
#include "ui/Card.h"
#include "ui/RowList.h"
#include "ui/SegmentedControl.h"
#include "ui/SymbolButton.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
const char* const rowName = "searchName";
}

SearchPage::SearchPage(DeviceSearch& search, QWidget* parent)
    : QWidget(parent), m_search(search), m_field(new QLineEdit),
      m_scope(
          new SegmentedControl({SearchTexts::scopeAll(), SearchTexts::scopeApps(), SearchTexts::scopeFiles()},
                               QStringLiteral("Suchbereich"))),
      m_rows(new QVBoxLayout), m_status(new TextLabel(search.status(), 11, TextLabel::secondary))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    auto* top = new QHBoxLayout;
    m_field->setPlaceholderText(SearchTexts::placeholder());
    m_field->setClearButtonEnabled(true);
    m_field->setText(search.text());
    top->addWidget(m_field, 1);
    top->addWidget(m_scope);
    column->addLayout(top);

    column->addWidget(RowList::scrolling(m_rows, 3), 1);
    column->addWidget(m_status);

    connect(m_field, &QLineEdit::textChanged, &search, &DeviceSearch::setText);
    // Enter opens the first result, as a launcher does.
    connect(m_field, &QLineEdit::returnPressed, this, [this] {
        const QList<SearchResult> shown = DeviceSearch::filtered(m_search.results(), currentScope());
        if (!shown.isEmpty())
            Q_EMIT openRequested(shown.first().url());
    });
    connect(m_scope, &SegmentedControl::chosen, this, &SearchPage::rebuild);
    connect(&search, &DeviceSearch::resultsChanged, this, &SearchPage::rebuild);
    connect(&search, &DeviceSearch::statusChanged, this, [this] { m_status->setText(m_search.status()); });
    connect(&search, &DeviceSearch::textChanged, this, [this] {
        if (m_field->text() != m_search.text())
            m_field->setText(m_search.text());
    });
    m_scope->setCurrent(SearchTexts::scopeAll());
    rebuild();
}

void SearchPage::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_field->setFocus();
}

DeviceSearch::Scope SearchPage::currentScope() const
{
    const QString scope = m_scope->current();
    if (scope == SearchTexts::scopeApps())
        return DeviceSearch::Scope::apps;
    if (scope == SearchTexts::scopeFiles())
        return DeviceSearch::Scope::files;
    return DeviceSearch::Scope::all;
}

QStringList SearchPage::rowNames() const
{
    return RowList::texts<QPushButton>(m_rows, QString::fromLatin1(rowName), &QPushButton::text);
}

QAbstractButton* SearchPage::rowButton(int row, const QString& text) const
{
    return RowList::button(m_rows, row, text);
}

QString SearchPage::statusText() const
{
    return m_status->text();
}

void SearchPage::rebuild()
{
    RowList::clear(m_rows);
    for (const SearchResult& result : DeviceSearch::filtered(m_search.results(), currentScope()))
        m_rows->addWidget(makeRow(result));
}

QWidget* SearchPage::makeRow(const SearchResult& result)
{
    auto* row = new Card;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(8, 2, 6, 2);
    layout->setSpacing(6);
    auto* glyph = new SymbolLabel(result.application ? QStringLiteral("app") : QStringLiteral("doc"), 15);
    glyph->setProperty("role", QStringLiteral("secondary"));
    layout->addWidget(glyph);
    QPushButton* name = PageButton::make(result.name, QStringLiteral("plain"));
    name->setObjectName(QString::fromLatin1(rowName));
    name->setToolTip(result.path);
    name->setStyleSheet(QStringLiteral("text-align: left;"));
    layout->addWidget(name, 1);
    auto* reveal = new SymbolButton(QStringLiteral("folder"), SearchTexts::reveal(), 22);
    auto* add = new SymbolButton(QStringLiteral("tray.and.arrow.down"), SearchTexts::addToShelf(), 22);
    layout->addWidget(reveal);
    layout->addWidget(add);
    const QUrl url = result.url();
    connect(name, &QPushButton::clicked, this, [this, url] { Q_EMIT openRequested(url); });
    connect(reveal, &SymbolButton::clicked, this, [this, url] { Q_EMIT revealRequested(url); });
    connect(add, &SymbolButton::clicked, this, [this, url] { Q_EMIT addRequested(url); });
    return row;
}
