#include "productivity/widgets/ShelfPage.h"

#include "productivity/Shelf.h"
#include "productivity/ShelfTexts.h"
#include "ui/Card.h"
#include "ui/SymbolButton.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

QWidget* itemRow(const QString& symbol, const QUrl& url)
{
    auto* row = new Card;
    row->setObjectName(QStringLiteral("shelfItem"));
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(10, 5, 6, 5);
    layout->setSpacing(8);
    auto* glyph = new SymbolLabel(symbol, 16);
    glyph->setProperty("role", QStringLiteral("secondary"));
    layout->addWidget(glyph);
    auto* name = new TextLabel(ShelfTexts::itemName(url), 13);
    name->setObjectName(QStringLiteral("shelfName"));
    name->setToolTip(url.toLocalFile());
    name->setMinimumWidth(40);
    layout->addWidget(name, 1);
    return row;
}

void clear(QVBoxLayout* layout)
{
    // A row may be the sender of the click that changed the list, so it goes later.
    while (QLayoutItem* item = layout->takeAt(0)) {
        if (QWidget* widget = item->widget()) {
            widget->hide();
            widget->deleteLater();
        }
        delete item;
    }
}

QStringList names(const QVBoxLayout* layout)
{
    QStringList names;
    for (int i = 0; i < layout->count(); ++i) {
        if (QWidget* row = layout->itemAt(i)->widget()) {
            if (auto* name = row->findChild<QLabel*>(QStringLiteral("shelfName")))
                names.append(name->text());
        }
    }
    return names;
}

} // namespace

ShelfPage::ShelfPage(Shelf& shelf, QWidget* parent)
    : QWidget(parent), m_shelf(shelf), m_empty(new QWidget), m_files(new QVBoxLayout), m_apps(new QVBoxLayout)
{
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    outer->addWidget(scroll);

    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 8, 0);
    column->setSpacing(6);

    auto* empty = new QVBoxLayout(m_empty);
    empty->setContentsMargins(0, 10, 0, 10);
    empty->setSpacing(3);
    auto* tray = new SymbolLabel(QStringLiteral("tray.and.arrow.down"), 30);
    tray->setProperty("role", QStringLiteral("secondary"));
    empty->addWidget(tray, 0, Qt::AlignHCenter);
    empty->addWidget(new TextLabel(ShelfTexts::emptyTitle(), 14, TextLabel::primary, QFont::DemiBold), 0,
                     Qt::AlignHCenter);
    empty->addWidget(new TextLabel(ShelfTexts::emptyDetail(), 12, TextLabel::secondary), 0, Qt::AlignHCenter);
    column->addWidget(m_empty);
    m_files->setSpacing(4);
    column->addLayout(m_files);
    column->addSpacing(6);
    column->addWidget(new TextLabel(ShelfTexts::appsHeader(), 10, TextLabel::caps));
    m_apps->setSpacing(4);
    column->addLayout(m_apps);
    column->addStretch(1);
    scroll->setWidget(content);

    connect(&shelf, &Shelf::filesChanged, this, &ShelfPage::rebuild);
    connect(&shelf, &Shelf::appsChanged, this, &ShelfPage::rebuild);
    rebuild();
}

QStringList ShelfPage::fileNames() const
{
    return names(m_files);
}
QStringList ShelfPage::appNames() const
{
    return names(m_apps);
}
bool ShelfPage::showsEmptyState() const
{
    return !m_empty->isHidden();
}

void ShelfPage::rebuild()
{
    clear(m_files);
    clear(m_apps);
    for (const QUrl& url : m_shelf.files()) {
        QWidget* row = itemRow(QStringLiteral("doc"), url);
        auto* remove = new SymbolButton(QStringLiteral("xmark"), QString(), 24);
        row->layout()->addWidget(remove);
        connect(remove, &SymbolButton::clicked, this, [this, url] { m_shelf.removeFile(url); });
        m_files->addWidget(row);
    }
    for (const QUrl& url : m_shelf.apps())
        m_apps->addWidget(itemRow(QStringLiteral("app"), url));
    m_empty->setHidden(!m_shelf.files().isEmpty());
}
