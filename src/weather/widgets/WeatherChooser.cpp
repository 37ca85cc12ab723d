#include "weather/widgets/WeatherChooser.h"

#include "ui/PanelTheme.h"
#include "weather/WeatherResultList.h"
#include "weather/WeatherStore.h"
#include "weather/WeatherTexts.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QVBoxLayout>

WeatherChooser::WeatherChooser(WeatherStore& weather, QWidget* parent)
    : QWidget(parent), m_weather(weather), m_results(new WeatherResultList(weather, this)),
      m_useLocation(new QPushButton(PanelTheme::buttonText(WeatherTexts::useLocation()))),
      m_field(new QLineEdit), m_search(new QPushButton(WeatherTexts::searchButton())),
      m_resultView(new QListView)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    m_useLocation->setCursor(Qt::PointingHandCursor);
    column->addWidget(m_useLocation, 0, Qt::AlignLeft);

    auto* searchRow = new QHBoxLayout;
    searchRow->setSpacing(6);
    m_field->setPlaceholderText(WeatherTexts::searchPlaceholder());
    m_field->setAccessibleName(WeatherTexts::searchPlaceholder());
    m_field->setClearButtonEnabled(true);
    m_field->setText(weather.searchText());
    searchRow->addWidget(m_field, 1);
    m_search->setCursor(Qt::PointingHandCursor);
    searchRow->addWidget(m_search);
    column->addLayout(searchRow);

    // The list grows with its rows (at most the geocoder's ten); the page around it scrolls.
    m_resultView->setModel(m_results);
    m_resultView->setAccessibleName(WeatherTexts::resultsName());
    m_resultView->setCursor(Qt::PointingHandCursor);
    m_resultView->setMouseTracking(true);
    m_resultView->setUniformItemSizes(true);
    m_resultView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_resultView->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_resultView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_resultView->setTextElideMode(Qt::ElideRight);
    m_resultView->setStyleSheet(
        QStringLiteral("QListView::item { padding: 5px 6px; border-radius: 8px; color: %1; }"
                       "QListView::item:hover, QListView::item:selected {"
                       " background: rgba(255,255,255,0.10); color: %2; }")
            .arg(PanelTheme::secondary().name(), PanelTheme::text().name()));
    column->addWidget(m_resultView);

    connect(m_useLocation, &QPushButton::clicked, &weather, &WeatherStore::useCurrentLocation);
    connect(m_field, &QLineEdit::textEdited, &weather, &WeatherStore::setSearchText);
    connect(m_field, &QLineEdit::returnPressed, &weather, &WeatherStore::search);
    connect(m_search, &QPushButton::clicked, &weather, &WeatherStore::search);
    connect(&weather, &WeatherStore::searchTextChanged, this, [this] {
        if (m_field->text() != m_weather.searchText())
            m_field->setText(m_weather.searchText());
    });
    m_field->installEventFilter(this);
    connect(m_resultView, &QListView::activated, this,
            [this](const QModelIndex& index) { m_results->select(index.row()); });
    connect(m_resultView, &QListView::clicked, this,
            [this](const QModelIndex& index) { m_results->select(index.row()); });
    connect(m_results, &QAbstractItemModel::modelReset, this, &WeatherChooser::fitResults);
    connect(&weather, &WeatherStore::searchingChanged, this, &WeatherChooser::showSearching);
    fitResults();
    showSearching();
}

bool WeatherChooser::eventFilter(QObject* watched, QEvent* event)
{
    // Down from the field goes to the first result, so a search works without the pointer.
    if (watched == m_field && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down && m_results->rowCount() > 0) {
        m_resultView->setFocus(Qt::TabFocusReason);
        m_resultView->setCurrentIndex(m_results->index(0));
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void WeatherChooser::fitResults()
{
    const int rows = m_results->rowCount();
    m_resultView->setVisible(rows > 0);
    if (rows == 0)
        return;
    const int frame = 2 * m_resultView->frameWidth();
    m_resultView->setFixedHeight(rows * m_resultView->sizeHintForRow(0) + frame);
}

void WeatherChooser::showSearching()
{
    m_search->setEnabled(!m_weather.searching());
}
