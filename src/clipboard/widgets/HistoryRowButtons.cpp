#include "clipboard/widgets/HistoryRowButtons.h"

#include "clipboard/HistoryListModel.h"
#include "clipboard/HistoryTexts.h"
#include "clipboard/widgets/HistoryRowDelegate.h"
#include "ui/SymbolButton.h"

#include <QEnterEvent>
#include <QHBoxLayout>
#include <QListView>
#include <QMouseEvent>
#include <QScrollBar>

HistoryRowButtons::HistoryRowButtons(QListView& list, HistoryRowDelegate& delegate)
    : QWidget(list.viewport()), m_list(list), m_delegate(delegate),
      m_pin(new SymbolButton(HistoryTexts::pinSymbol(false), HistoryTexts::pinHint(),
                             HistoryRowDelegate::buttonSize)),
      m_remove(new SymbolButton(HistoryTexts::deleteSymbol(), HistoryTexts::deleteHint(),
                                HistoryRowDelegate::buttonSize))
{
    setObjectName(QStringLiteral("rowButtons"));
    m_remove->setAccessibleName(HistoryTexts::deleteLabel());
    // Checked shows the accent star; the row's pinned state decides it, not the click.
    m_pin->setCheckable(true);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(HistoryRowDelegate::buttonGap);
    row->addWidget(m_pin);
    row->addWidget(m_remove);
    hide();

    connect(m_pin, &SymbolButton::clicked, this, [this] {
        m_pin->setChecked(m_row.data(HistoryListModel::PinnedRole).toBool());
        if (m_row.isValid())
            Q_EMIT pinClicked(m_row.row());
    });
    connect(m_remove, &SymbolButton::clicked, this, [this] {
        if (m_row.isValid())
            Q_EMIT removeClicked(m_row.row());
    });

    list.viewport()->setMouseTracking(true);
    list.viewport()->installEventFilter(this);
    connect(list.verticalScrollBar(), &QScrollBar::valueChanged, this, &HistoryRowButtons::follow);
    QAbstractItemModel* model = list.model();
    connect(model, &QAbstractItemModel::modelReset, this, &HistoryRowButtons::scheduleFollow);
    connect(model, &QAbstractItemModel::layoutChanged, this, &HistoryRowButtons::scheduleFollow);
    connect(model, &QAbstractItemModel::rowsInserted, this, &HistoryRowButtons::scheduleFollow);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &HistoryRowButtons::scheduleFollow);
    connect(model, &QAbstractItemModel::rowsMoved, this, &HistoryRowButtons::scheduleFollow);
    connect(model, &QAbstractItemModel::dataChanged, this, &HistoryRowButtons::scheduleFollow);
}

bool HistoryRowButtons::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_list.viewport())
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::Enter:
        m_pointer = static_cast<QEnterEvent*>(event)->position().toPoint();
        follow();
        break;
    case QEvent::MouseMove:
        m_pointer = static_cast<QMouseEvent*>(event)->position().toPoint();
        follow();
        break;
    case QEvent::Leave:
        // Only leaving the viewport itself: moving onto the buttons, its children, is no leave.
        m_pointer.reset();
        follow();
        break;
    case QEvent::Resize:
    case QEvent::Show:
        scheduleFollow();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void HistoryRowButtons::scheduleFollow()
{
    // After the view has taken in the change; the rows may have moved under a resting pointer.
    if (m_followPending)
        return;
    m_followPending = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_followPending = false;
            follow();
        },
        Qt::QueuedConnection);
}

void HistoryRowButtons::follow()
{
    QModelIndex index;
    if (m_pointer && m_list.model()->rowCount() > 0) {
        // Asking for a rectangle makes the view finish a layout it still owes; only then does
        // indexAt() know where the rows are now.
        m_list.visualRect(m_list.model()->index(0, 0));
        index = m_list.indexAt(*m_pointer);
        if (index.isValid() && !HistoryRowDelegate::rowRect(m_list, index).contains(*m_pointer))
            index = QModelIndex();
    }
    setRow(index);
}

void HistoryRowButtons::setRow(const QModelIndex& index)
{
    const QModelIndex before = m_row;
    m_row = index;
    if (index.isValid()) {
        const QRect card = HistoryRowDelegate::rowRect(m_list, index);
        const QRect pin = HistoryRowDelegate::buttonRect(card, HistoryRowDelegate::Area::pin);
        const QRect remove = HistoryRowDelegate::buttonRect(card, HistoryRowDelegate::Area::remove);
        setGeometry(pin.united(remove));
        const bool pinned = index.data(HistoryListModel::PinnedRole).toBool();
        m_pin->setSymbol(HistoryTexts::pinSymbol(pinned));
        m_pin->setChecked(pinned);
        show();
        raise();
    } else {
        hide();
    }
    m_delegate.setActiveRow(index);
    if (before != index)
        m_list.viewport()->update();
}
