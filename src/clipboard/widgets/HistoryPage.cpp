#include "clipboard/widgets/HistoryPage.h"

#include "clipboard/ClipboardHistory.h"
#include "clipboard/HistoryListModel.h"
#include "clipboard/HistoryTexts.h"
#include "clipboard/widgets/HistoryRowButtons.h"
#include "clipboard/widgets/HistoryRowDelegate.h"
#include "ui/FlowLayout.h"
#include "ui/PanelTheme.h"
#include "ui/SymbolButton.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListView>
#include <QPersistentModelIndex>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

QWidget* makeEmptyState()
{
    auto* empty = new QWidget;
    empty->setObjectName(QStringLiteral("emptyState"));
    auto* column = new QVBoxLayout(empty);
    column->setSpacing(6);
    column->addStretch(1);
    auto* symbol = new SymbolLabel(HistoryTexts::emptySymbol(), 30);
    symbol->setProperty("role", QStringLiteral("secondary"));
    column->addWidget(symbol, 0, Qt::AlignHCenter);
    column->addWidget(new TextLabel(HistoryTexts::emptyTitle(), 13, TextLabel::primary, QFont::DemiBold), 0,
                      Qt::AlignHCenter);
    auto* detail = (new TextLabel(HistoryTexts::emptyDetail(), 11, TextLabel::secondary))->wrapping();
    detail->setAlignment(Qt::AlignHCenter);
    column->addWidget(detail);
    column->addStretch(1);
    return empty;
}

} // namespace

HistoryPage::HistoryPage(ClipboardHistory& history, Productivity& productivity, Clock& clock,
                         Scheduler& scheduler, QWidget* parent)
    : QWidget(parent), m_history(history),
      m_rows(new HistoryListModel(history, productivity, clock, scheduler, this)), m_delegate(nullptr),
      m_search(new QLineEdit),
      m_recording(new SymbolButton(HistoryTexts::recordingSymbol(history.recording()),
                                   HistoryTexts::recordingHint())),
      m_clear(new SymbolButton(HistoryTexts::clearSymbol(), HistoryTexts::clearHint())),
      m_chips(new QButtonGroup(this)), m_storageError(new TextLabel(QString(), 11, TextLabel::secondary)),
      m_stack(new QStackedWidget), m_list(new QListView), m_empty(makeEmptyState())
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);

    auto* controls = new QHBoxLayout;
    controls->setSpacing(6);
    m_search->setPlaceholderText(HistoryTexts::searchPlaceholder());
    m_search->setClearButtonEnabled(true);
    m_search->setFont(PanelTheme::font(13));
    m_search->setStyleSheet(QStringLiteral("QLineEdit { background: rgba(255,255,255,0.08); border: none; "
                                           "border-radius: 8px; padding: 5px 9px; color: %1; }")
                                .arg(PanelTheme::text().name()));
    controls->addWidget(m_search, 1);
    controls->addWidget(m_recording);
    controls->addWidget(m_clear);
    column->addLayout(controls);

    // The chips wrap onto a second line when the panel is narrower than all ten.
    auto* chipRow = new QWidget;
    auto* chips = new FlowLayout(chipRow, 4);
    m_chips->setExclusive(true);
    for (ClipKind kind : ClipKinds::allCases()) {
        auto* chip = new QPushButton(ClipKinds::label(kind));
        chip->setProperty("kind", QStringLiteral("chip"));
        chip->setCheckable(true);
        chip->setChecked(kind == m_rows->filter());
        chip->setFocusPolicy(Qt::NoFocus);
        chip->setCursor(Qt::PointingHandCursor);
        chip->setFont(PanelTheme::font(12));
        // Room for the bold label of the chosen chip (plus its side padding), so choosing does
        // not clip it.
        chip->setMinimumWidth(
            QFontMetrics(PanelTheme::font(12, QFont::DemiBold)).horizontalAdvance(chip->text()) + 14);
        m_chips->addButton(chip, int(kind));
        chips->addWidget(chip);
    }
    column->addWidget(chipRow);

    m_storageError->setObjectName(QStringLiteral("storageError"));
    m_storageError->setWordWrap(true);
    m_storageError->setStyleSheet(QStringLiteral("color: %1;").arg(PanelTheme::active().name()));
    column->addWidget(m_storageError);

    m_delegate = new HistoryRowDelegate(m_list);
    m_list->setModel(m_rows);
    m_list->setItemDelegate(m_delegate);
    // Rows share one height, so the view lays out only what is on screen, even for 100,000.
    m_list->setUniformItemSizes(true);
    m_list->setSelectionMode(QAbstractItemView::NoSelection);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setMouseTracking(true);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->viewport()->setAutoFillBackground(false);
    m_buttons = new HistoryRowButtons(*m_list, *m_delegate);
    m_stack->addWidget(m_list);
    m_stack->addWidget(m_empty);
    column->addWidget(m_stack, 1);

    connect(m_search, &QLineEdit::textChanged, m_rows, &HistoryListModel::setSearch);
    connect(m_chips, &QButtonGroup::idClicked, this, [this](int id) { m_rows->setFilter(ClipKind(id)); });
    connect(m_recording, &SymbolButton::clicked, this,
            [this] { m_history.setRecording(!m_history.recording()); });
    connect(m_clear, &SymbolButton::clicked, &history, &ClipboardHistory::clearHistory);
    connect(m_delegate, &HistoryRowDelegate::rowClicked, this,
            [this](int row) { queueRowAction(row, &HistoryListModel::copyBack); });
    connect(m_delegate, &HistoryRowDelegate::pinClicked, this,
            [this](int row) { queueRowAction(row, &HistoryListModel::togglePin); });
    connect(m_delegate, &HistoryRowDelegate::removeClicked, this,
            [this](int row) { queueRowAction(row, &HistoryListModel::remove); });
    connect(m_buttons, &HistoryRowButtons::pinClicked, this,
            [this](int row) { queueRowAction(row, &HistoryListModel::togglePin); });
    connect(m_buttons, &HistoryRowButtons::removeClicked, this,
            [this](int row) { queueRowAction(row, &HistoryListModel::remove); });
    connect(&history, &ClipboardHistory::recordingChanged, this, &HistoryPage::showRecording);
    connect(&history, &ClipboardHistory::historyStorageErrorChanged, this, &HistoryPage::showStorageError);
    connect(m_rows, &QAbstractItemModel::modelReset, this, &HistoryPage::showRowsOrEmpty);
    connect(m_rows, &QAbstractItemModel::rowsInserted, this, &HistoryPage::showRowsOrEmpty);
    connect(m_rows, &QAbstractItemModel::rowsRemoved, this, &HistoryPage::showRowsOrEmpty);
    connect(m_rows, &HistoryListModel::settled, this, &HistoryPage::showRowsOrEmpty);

    showRecording();
    showStorageError();
    showRowsOrEmpty();
}

QPushButton* HistoryPage::chip(ClipKind kind) const
{
    return qobject_cast<QPushButton*>(m_chips->button(int(kind)));
}

void HistoryPage::showRecording()
{
    m_recording->setSymbol(HistoryTexts::recordingSymbol(m_history.recording()));
}

void HistoryPage::showStorageError()
{
    m_storageError->setText(m_history.historyStorageError());
    m_storageError->setVisible(!m_history.historyStorageError().isEmpty());
}

void HistoryPage::queueRowAction(int row, void (HistoryListModel::*action)(int))
{
    const QPersistentModelIndex index(m_rows->index(row));
    const QVariant id = index.data(HistoryListModel::IdRole);
    QMetaObject::invokeMethod(
        this,
        [this, index, id, action] {
            // A capture or rebuild in between may have put another clip in that row.
            if (index.isValid() && index.data(HistoryListModel::IdRole) == id)
                (m_rows->*action)(index.row());
        },
        Qt::QueuedConnection);
}

void HistoryPage::showRowsOrEmpty()
{
    // While new rows are being worked out the old ones stay; "nothing found" waits for the answer.
    const bool nothing = m_rows->isEmpty() && m_rows->isSettled();
    m_stack->setCurrentWidget(nothing ? m_empty : static_cast<QWidget*>(m_list));
}
