#include "productivity/widgets/ShelfPage.h"

#include "productivity/DesktopEntry.h"
#include "productivity/Shelf.h"
#include "productivity/ShelfFileList.h"
#include "productivity/ShelfTexts.h"
#include "productivity/widgets/PageButton.h"
#include "productivity/widgets/ShelfFileView.h"
#include "ui/RowList.h"
#include "ui/SymbolButton.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// A favourite's name: the desktop entry's own name where it can be read, else the file's.
QString appName(const QUrl& url)
{
    if (url.fileName().endsWith(u".desktop")) {
        if (const auto entry = DesktopEntry::read(url.toLocalFile(), DesktopEntry::userLanguages()))
            return entry->name;
    }
    return ShelfTexts::itemName(url);
}

} // namespace

ShelfPage::ShelfPage(Shelf& shelf, QWidget* parent)
    : QWidget(parent), m_shelf(shelf), m_list(new ShelfFileList(shelf, this)), m_view(new ShelfFileView),
      m_empty(new QWidget), m_apps(new QHBoxLayout)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);

    auto* actions = new QHBoxLayout;
    actions->setSpacing(6);
    QPushButton* add = PageButton::make(ShelfTexts::addFiles());
    QPushButton* share = PageButton::make(ShelfTexts::shareAll(), QStringLiteral("primary"));
    actions->addWidget(add);
    actions->addStretch(1);
    actions->addWidget(share);
    column->addLayout(actions);

    auto* empty = new QVBoxLayout(m_empty);
    empty->setContentsMargins(0, 6, 0, 6);
    empty->setSpacing(3);
    auto* tray = new SymbolLabel(QStringLiteral("tray.and.arrow.down"), 30);
    tray->setProperty("role", QStringLiteral("secondary"));
    empty->addWidget(tray, 0, Qt::AlignHCenter);
    empty->addWidget(new TextLabel(ShelfTexts::emptyTitle(), 14, TextLabel::primary, QFont::DemiBold), 0,
                     Qt::AlignHCenter);
    empty->addWidget(new TextLabel(ShelfTexts::emptyDetail(), 12, TextLabel::secondary), 0, Qt::AlignHCenter);
    column->addWidget(m_empty, 1);

    m_view->setModel(m_list);
    column->addWidget(m_view, 1);

    auto* appsHeader = new QHBoxLayout;
    appsHeader->addWidget(new TextLabel(ShelfTexts::appsHeader(), 10, TextLabel::caps));
    appsHeader->addStretch(1);
    QPushButton* addApp = PageButton::make(ShelfTexts::addApps(), QStringLiteral("plain"));
    appsHeader->addWidget(addApp);
    column->addLayout(appsHeader);
    m_apps->setSpacing(6);
    column->addLayout(m_apps);

    connect(add, &QPushButton::clicked, this, [this] { Q_EMIT chooseRequested(false); });
    connect(addApp, &QPushButton::clicked, this, [this] { Q_EMIT chooseRequested(true); });
    connect(share, &QPushButton::clicked, this, [this] { Q_EMIT shareRequested(m_shelf.files()); });
    connect(m_view, &ShelfFileView::removeRequested, &shelf, &Shelf::removeFile);
    connect(m_view, &ShelfFileView::openRequested, this, &ShelfPage::openRequested);
    connect(&shelf, &Shelf::filesChanged, this, &ShelfPage::showFiles);
    connect(&shelf, &Shelf::appsChanged, this, &ShelfPage::rebuildApps);
    showFiles();
    rebuildApps();
}

QStringList ShelfPage::fileNames() const
{
    QStringList names;
    for (int row = 0; row < m_list->rowCount(); ++row)
        names.append(m_list->index(row).data().toString());
    return names;
}

QStringList ShelfPage::appNames() const
{
    QStringList names;
    for (int i = 0; i < m_apps->count(); ++i) {
        if (QWidget* chip = m_apps->itemAt(i)->widget()) {
            if (auto* button = chip->findChild<QPushButton*>())
                names.append(button->text());
        }
    }
    return names;
}

bool ShelfPage::showsEmptyState() const
{
    return !m_empty->isHidden();
}

QPushButton* ShelfPage::button(const QString& text) const
{
    for (QPushButton* button : findChildren<QPushButton*>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

void ShelfPage::showFiles()
{
    const bool empty = m_shelf.files().isEmpty();
    m_empty->setHidden(!empty);
    m_view->setHidden(empty);
}

void ShelfPage::rebuildApps()
{
    RowList::clear(m_apps);
    for (const QUrl& url : m_shelf.apps()) {
        auto* chip = new QWidget;
        auto* layout = new QHBoxLayout(chip);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        QPushButton* launch = PageButton::make(appName(url), QStringLiteral("chip"));
        launch->setToolTip(url.toLocalFile());
        auto* remove = new SymbolButton(QStringLiteral("xmark"), ShelfTexts::removeApp(), 20);
        layout->addWidget(launch);
        layout->addWidget(remove);
        connect(launch, &QPushButton::clicked, this, [this, url] { Q_EMIT openRequested(url); });
        connect(remove, &SymbolButton::clicked, this, [this, url] { m_shelf.removeApp(url); });
        m_apps->addWidget(chip);
    }
    m_apps->addStretch(1);
}
