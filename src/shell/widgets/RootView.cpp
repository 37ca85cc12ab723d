#include "shell/widgets/RootView.h"

#include "model/Model.h"
#include "model/PanelState.h"
#include "productivity/Productivity.h"
#include "settings/Preferences.h"
#include "shell/NotchGeometry.h"
#include "shell/PanelShape.h"
#include "shell/widgets/FullLayout.h"
#include "shell/widgets/HeaderRow.h"
#include "shell/widgets/PageRegistry.h"
#include "shell/widgets/WelcomeGlow.h"
#include "ui/LayoutRefresh.h"
#include "ui/PanelTheme.h"
#include "ui/Symbol.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QVBoxLayout>

namespace {

// Only local files can go on the shelf; a drag of web links is not ours.
bool carriesFiles(const QMimeData* data)
{
    if (!data || !data->hasUrls())
        return false;
    const QList<QUrl> urls = data->urls();
    return std::any_of(urls.cbegin(), urls.cend(), [](const QUrl& url) { return url.isLocalFile(); });
}

constexpr int sideMargin = 20;
constexpr int topMargin = 5;
constexpr int bottomMargin = 11;

// A state whose area is not part of this build shows an empty frame rather than nothing at all.
QWidget* orEmpty(QWidget* widget)
{
    return widget ? widget : new QWidget;
}

} // namespace

RootView::RootView(Model& model, const PageRegistry& pages, QWidget* parent) : QWidget(parent), m_model(model)
{
    // The resources sit in a static library: only a call pulls them into the program.
    Q_INIT_RESOURCE(brenlow);
    Symbol::ensureFont();
    setStyleSheet(PanelTheme::styleSheet());
    setFont(PanelTheme::font(13));
    setAcceptDrops(true);
    setAttribute(Qt::WA_OpaquePaintEvent, false);

    m_glow = new WelcomeGlow(model.panel(), this);
    m_framed = new QWidget(this);
    // Built inside the styled frame, so every control is measured with the panel's style sheet.
    auto* column = new QVBoxLayout(m_framed);
    m_header = new HeaderRow(model.platform().clock, model.platform().scheduler, pages, m_framed);
    m_onboarding = orEmpty(pages.makePage(Page::onboarding));
    m_mini = orEmpty(pages.makeMiniOverview());
    m_full = new FullLayout(model, pages, m_framed);
    column->setContentsMargins(sideMargin, topMargin, sideMargin, bottomMargin);
    column->setSpacing(6);
    column->addWidget(m_header);
    column->addWidget(m_onboarding, 1);
    column->addWidget(m_mini, 1);
    column->addWidget(m_full, 1);

    const PanelState& panel = model.panel();
    connect(&panel, &PanelState::introActiveChanged, this, &RootView::refresh);
    connect(&panel, &PanelState::expandedChanged, this, &RootView::refresh);
    connect(&panel, &PanelState::pageChanged, this, &RootView::refresh);
    connect(&model.productivity(), &Productivity::miniChanged, this, &RootView::refresh);
    connect(&model.preferences(), &Preferences::valuesChanged, this, &RootView::place);
    refresh();
}

QSize RootView::contentMinimum() const
{
    if (m_content == PanelContent::glow || m_content == PanelContent::nothing)
        return {0, 0};
    return m_framed->minimumSizeHint();
}

void RootView::refresh()
{
    const PanelContent::Kind next = PanelContent::choose(m_model.introActive(), m_model.expanded(),
                                                         m_model.page(), m_model.productivity().mini());
    m_content = next;
    m_glow->setVisible(next == PanelContent::glow);
    const bool framed =
        next == PanelContent::onboarding || next == PanelContent::mini || next == PanelContent::full;
    m_onboarding->setVisible(next == PanelContent::onboarding);
    m_mini->setVisible(next == PanelContent::mini);
    m_full->setVisible(next == PanelContent::full);
    m_framed->setVisible(framed);
    if (framed)
        LayoutRefresh::refresh(m_framed);
    place();
    update();
}

void RootView::place()
{
    m_glow->setGeometry(rect());
    // The content is laid out at the size the panel is heading for and clipped while the window
    // animates towards it, so nothing reflows mid-animation. A page wider than that overflows on
    // its own instead of pushing the header and the status line out of the panel.
    PanelSizeInputs state;
    state.expanded = true;
    state.page = m_model.page();
    state.mini = m_model.productivity().mini();
    state.layout = m_model.preferences().values().layout;
    const QSize target =
        NotchGeometry::panelSize(state, QSizeF(m_model.notchWidth(), m_model.notchHeight())).toSize();
    m_framed->setGeometry(0, 0, std::max(width(), target.width()), std::max(height(), target.height()));
}

void RootView::paintEvent(QPaintEvent*)
{
    if (m_content == PanelContent::glow)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = rect();
    const qreal radius = PanelShape::radiusFor(area.size());
    painter.fillPath(PanelShape::path(area, radius), PanelTheme::background());
    if (m_targeted) {
        painter.setPen(QPen(PanelTheme::accent(), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(PanelShape::path(area.adjusted(1, -2, -1, -1), radius - 1));
    }
}

void RootView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    place();
}

void RootView::setTargeted(bool targeted)
{
    if (m_targeted == targeted)
        return;
    m_targeted = targeted;
    update();
}

void RootView::dragEnterEvent(QDragEnterEvent* event)
{
    if (!carriesFiles(event->mimeData())) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    setTargeted(true);
}

void RootView::dragMoveEvent(QDragMoveEvent* event)
{
    if (carriesFiles(event->mimeData()))
        event->acceptProposedAction();
}

void RootView::dragLeaveEvent(QDragLeaveEvent* event)
{
    setTargeted(false);
    QWidget::dragLeaveEvent(event);
}

void RootView::dropEvent(QDropEvent* event)
{
    setTargeted(false);
    if (!carriesFiles(event->mimeData())) {
        event->ignore();
        return;
    }
    Q_EMIT m_model.show(Page::shelf);
    // All in one step: a drop of thousands of files is stored once, not once per file. The
    // shelf skips what is not a local file.
    m_model.addFiles(event->mimeData()->urls());
    event->acceptProposedAction();
}
