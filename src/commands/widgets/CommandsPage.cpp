#include "commands/widgets/CommandsPage.h"

#include "commands/CommandListModel.h"
#include "commands/MenuCommands.h"
#include "setup/PermissionStore.h"
#include "ui/PanelTheme.h"
#include "ui/SymbolButton.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace {

// One command: its name on the left, its shortcut on the right; disabled ones are dimmed.
class CommandDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const QRect row = option.rect.adjusted(0, 1, -2, -1);
        if (option.state & QStyle::State_MouseOver) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(PanelTheme::card());
            painter->drawRoundedRect(QRectF(row), 8, 8);
        }
        const bool enabled = index.data(CommandListModel::EnabledRole).toBool();
        const QString keys = index.data(CommandListModel::KeysRole).toString();
        const QFont keyFont = PanelTheme::digits(12);
        const int keyWidth = QFontMetrics(keyFont).horizontalAdvance(keys);
        const QRect keyRect(row.right() - 10 - keyWidth, row.top(), keyWidth, row.height());
        painter->setFont(keyFont);
        painter->setPen(PanelTheme::secondary());
        painter->drawText(keyRect, Qt::AlignVCenter | Qt::AlignRight, keys);
        const QFont nameFont = PanelTheme::font(13);
        const int nameWidth = keyRect.left() - 12 - (row.left() + 10);
        painter->setFont(nameFont);
        painter->setPen(enabled ? PanelTheme::text() : PanelTheme::tertiary());
        painter->drawText(
            QRect(row.left() + 10, row.top(), nameWidth, row.height()), Qt::AlignVCenter | Qt::AlignLeft,
            QFontMetrics(nameFont).elidedText(index.data().toString(), Qt::ElideRight, nameWidth));
        painter->restore();
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override
    {
        return {option.rect.width(), 30};
    }
};

} // namespace

CommandsPage::CommandsPage(const MenuCommands& commands, const PermissionStore& permissions, QWidget* parent)
    : QWidget(parent), m_commands(commands), m_permissions(permissions),
      m_rows(new CommandListModel(commands, this)),
      m_status((new TextLabel(QString(), 11, TextLabel::secondary))->wrapping()), m_search(new QLineEdit),
      m_reload(new SymbolButton(QStringLiteral("arrow.clockwise"), QStringLiteral("Erneut laden"), 26)),
      m_access(new QPushButton(QStringLiteral("Bedienungshilfen erlauben"))), m_list(new QListView),
      m_empty(new TextLabel(CommandListModel::emptyText(), 12, TextLabel::secondary))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    auto* top = new QHBoxLayout;
    m_search->setPlaceholderText(CommandListModel::searchPlaceholder());
    m_search->setClearButtonEnabled(true);
    top->addWidget(m_search, 1);
    top->addWidget(m_access);
    top->addWidget(m_reload);
    column->addLayout(top);
    column->addWidget(m_status);

    m_list->setModel(m_rows);
    m_list->setItemDelegate(new CommandDelegate(m_list));
    m_list->setUniformItemSizes(true);
    m_list->setMouseTracking(true);
    m_list->setSelectionMode(QAbstractItemView::NoSelection);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->viewport()->setAutoFillBackground(false);
    m_list->setCursor(Qt::PointingHandCursor);
    column->addWidget(m_list, 1);
    m_empty->setAlignment(Qt::AlignCenter);
    column->addWidget(m_empty, 1);

    connect(m_search, &QLineEdit::textChanged, m_rows, &CommandListModel::setSearch);
    connect(m_list, &QListView::clicked, this, [this](const QModelIndex& index) {
        if (const CommandItem* item = m_rows->item(index.row()))
            Q_EMIT executeRequested(*item);
    });
    connect(m_reload, &SymbolButton::clicked, this, &CommandsPage::reloadRequested);
    connect(m_access, &QPushButton::clicked, this, &CommandsPage::accessibilityRequested);
    connect(&commands, &MenuCommands::commandStatusChanged, this, &CommandsPage::sync);
    connect(&commands, &MenuCommands::commandLoadingChanged, this, &CommandsPage::sync);
    connect(&permissions, &PermissionStore::accessibilityChanged, this, &CommandsPage::sync);
    connect(m_rows, &QAbstractItemModel::modelReset, this, &CommandsPage::sync);
    sync();
}

void CommandsPage::sync()
{
    m_status->setText(m_commands.commandStatus());
    m_access->setVisible(!m_permissions.accessibility());
    m_reload->setEnabled(!m_commands.commandLoading());
    const bool none = m_rows->rowCount() == 0;
    m_list->setVisible(!none);
    m_empty->setVisible(none);
}
