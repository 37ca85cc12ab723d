#include "MediaTests.h"
#include "TestSupport.h"

#include "CoverServer.h"
#include "media/ArtworkStore.h"
#include "media/NowPlaying.h"
#include "media/TrackToast.h"
#include "media/TrackToastSettings.h"
#include "media/WingSurface.h"
#include "media/widgets/MediaSettings.h"
#include "media/widgets/MusicCard.h"
#include "model/PanelState.h"
#include "platform/SessionEvents.h"
#include "settings/Preferences.h"
#include "ui/SegmentedControl.h"
#include "ui/SymbolButton.h"
#include "ui/ToggleRow.h"
#include "ui/ToggleSwitch.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>

namespace {

// The wing's window in memory: movements finish when the test says so.
class MemoryWingSurface final : public WingSurface
{
public:
    void setWing(const QImage& image, const QString& title, const QString& subtitle, double height) override
    {
        this->image = image;
        this->title = title;
        this->subtitle = subtitle;
        this->height = height;
    }
    void slideIn(const QRectF& from, const QRectF& to, double seconds) override
    {
        shown = true;
        start = from;
        current = to;
        slideSeconds = seconds;
        pendingDone = nullptr;
    }
    void slideOut(const QRectF& to, double seconds, std::function<void()> done) override
    {
        current = to;
        slideSeconds = seconds;
        pendingDone = std::move(done);
    }
    void orderOut() override
    {
        shown = false;
        pendingDone = nullptr;
    }
    bool isShown() const override { return shown; }
    QRectF frame() const override { return current; }
    // The retraction's animation reaches its end (a stopped one never does).
    void finishSlide()
    {
        if (auto done = std::exchange(pendingDone, nullptr))
            done();
    }

    bool shown = false;
    QRectF start, current;
    double slideSeconds = 0;
    QImage image;
    QString title, subtitle;
    double height = 0;
    std::function<void()> pendingDone;
};

} // namespace

// The wing and the music card on a model with the memory bridge.
class ToastTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ModelFixture> m_fixture;
    std::unique_ptr<MemoryWingSurface> m_surface;
    std::unique_ptr<TrackToast> m_toast;

    Model& model() { return *m_fixture->model; }
    NowPlaying& media() { return model().nowPlaying(); }
    MemoryPlayerBridge& players() { return m_fixture->memory.players; }

    void play(const QString& id, bool playing = true, double duration = 200)
    {
        players().setPlayer(QStringLiteral("Music"),
                            trackReply(id, playing, duration, 10, QStringLiteral("Song ") + id));
        media().refreshMedia();
        QTRY_VERIFY(!media().mediaBusy());
        QTRY_COMPARE(media().media() ? media().media()->trackID : QString(), id);
    }

private Q_SLOTS:
    void initTestCase() { enterTestMode(); }
    void init()
    {
        m_fixture = std::make_unique<ModelFixture>();
        m_fixture->memory.displays.list = {DisplayInfo{QStringLiteral("screen"), QRectF(0, 0, 1920, 1080)}};
        m_surface = std::make_unique<MemoryWingSurface>();
        MemoryPlatform& memory = m_fixture->memory;
        m_toast = std::make_unique<TrackToast>(
            TrackToast::Inputs{
                media(), model().trackToastSettings(),
                [this] { return model().expanded() || model().captureBusy() || model().introActive(); },
                model().preferences(), memory.displays, memory.sessionEvents, memory.clock, memory.scheduler},
            *m_surface);
        // As the application delegate wires it.
        connect(&model().panel(), &PanelState::expandedChanged, m_toast.get(),
                [this] { m_toast->panelExpanded(model().expanded()); });
        model().setMediaEnabled(true);
        QTRY_VERIFY(!media().mediaBusy());
    }
    void cleanup()
    {
        m_toast.reset();
        m_surface.reset();
        m_fixture.reset();
    }

    void newTrackSlidesOutAndRetracts()
    {
        play(QStringLiteral("a"));
        QVERIFY(!m_surface->shown); // the first track after start is not news
        play(QStringLiteral("b"));
        QVERIFY(m_surface->shown);
        QCOMPARE(m_surface->title, QStringLiteral("Song b"));
        QCOMPARE(m_surface->subtitle, QStringLiteral("Band"));
        QCOMPARE(m_surface->current, QRectF(652, 0, 230, 24));
        QCOMPARE(m_surface->start, QRectF(881, 0, 1, 24));
        QCOMPARE(m_surface->slideSeconds, 0.22);
        QCOMPARE(m_toast->visibleMusic(), std::optional(QStringLiteral("Music:b")));

        m_fixture->memory.scheduler.advance(2.9);
        QVERIFY(m_surface->shown && !m_surface->pendingDone);
        m_fixture->memory.scheduler.advance(0.2);
        QVERIFY(m_surface->pendingDone); // retracting
        QCOMPARE(m_surface->current, QRectF(881, 0, 1, 24));
        QCOMPARE(m_surface->slideSeconds, 0.18);
        m_surface->finishSlide();
        QVERIFY(!m_surface->shown);
    }

    void aStaleRetractionLeavesTheNewerWing()
    {
        play(QStringLiteral("a"));
        play(QStringLiteral("b"));
        m_fixture->memory.scheduler.advance(3.1);
        auto staleDone = std::exchange(m_surface->pendingDone, nullptr);
        QVERIFY(staleDone);
        play(QStringLiteral("c")); // hides b's wing and shows c's
        QVERIFY(m_surface->shown);
        staleDone();
        QVERIFY(m_surface->shown);
        QCOMPARE(m_surface->title, QStringLiteral("Song c"));
    }

    void neverOverThePanelAndGoneWhenItOpens()
    {
        play(QStringLiteral("a"));
        play(QStringLiteral("b"));
        QVERIFY(m_surface->shown);
        model().setExpanded(true);
        QVERIFY(!m_surface->shown);
        play(QStringLiteral("c"));
        QVERIFY(!m_surface->shown);
        model().setExpanded(false);
        model().setCaptureBusy(true);
        play(QStringLiteral("d"));
        QVERIFY(!m_surface->shown);
        model().setCaptureBusy(false);
        model().trackToastSettings().setEnabled(false);
        play(QStringLiteral("e"));
        QVERIFY(!m_surface->shown);
    }

    void pausingOrLeavingTheTrackHidesItsWing()
    {
        play(QStringLiteral("a"));
        play(QStringLiteral("b"));
        QVERIFY(m_surface->shown);
        play(QStringLiteral("b"), false);
        QVERIFY(!m_surface->shown);
    }

    // Sleep takes the wing away at once, mid-slide included; a new screen layout too.
    void sleepOrNewScreensHideTheWing()
    {
        play(QStringLiteral("a"));
        play(QStringLiteral("b"));
        QVERIFY(m_surface->shown);
        Q_EMIT m_fixture->memory.sessionEvents.willSleep();
        QVERIFY(!m_surface->shown);
        play(QStringLiteral("c"));
        QVERIFY(m_surface->shown);
        m_fixture->memory.displays.change();
        QVERIFY(!m_surface->shown);
    }

    void aLateCoverJoinsTheVisibleWing()
    {
        play(QStringLiteral("a"));
        players().setCover(QStringLiteral("Music"), QStringLiteral("b"), CoverServer::png());
        players().holdCovers();
        play(QStringLiteral("b"));
        QVERIFY(m_surface->shown && m_surface->image.isNull());
        QCOMPARE(m_toast->pending(), std::optional(QStringLiteral("Music:b")));
        players().release();
        QTRY_VERIFY(!m_surface->image.isNull());
        QVERIFY(!m_toast->pending());

        // Too late: after the wing's duration the cover is left out.
        players().setCover(QStringLiteral("Music"), QStringLiteral("c"), CoverServer::png());
        players().holdCovers();
        play(QStringLiteral("c"));
        m_fixture->memory.clock.advance(3.5);
        players().release();
        QTRY_VERIFY(model().nowPlaying().artwork().hasImage());
        QVERIFY(m_surface->image.isNull());
    }

    void previewAndUnreadNotices()
    {
        QSignalSpy closes(m_toast.get(), &TrackToast::closeRequested);
        m_toast->preview();
        QVERIFY(!m_surface->shown); // nothing plays yet
        play(QStringLiteral("a"));
        m_toast->preview();
        QCOMPARE(closes.count(), 1);
        QVERIFY(m_surface->shown);
        QCOMPARE(m_surface->title, QStringLiteral("Song a"));

        model().trackToastSettings().setEnabled(false);
        model().trackToastSettings().setDuration(5);
        m_toast->announceUnread(QStringLiteral("org.example.Mail.desktop"), QStringLiteral("Post"), 3);
        QVERIFY(m_surface->shown);
        QCOMPARE(m_surface->title, QStringLiteral("Post"));
        QCOMPARE(m_surface->subtitle, QStringLiteral("3 ungelesene Hinweise"));
        m_fixture->memory.scheduler.advance(4.9);
        QVERIFY(!m_surface->pendingDone);
        m_fixture->memory.scheduler.advance(0.2);
        QVERIFY(m_surface->pendingDone);
    }

    void musicCardFollowsAndControlsThePlayer()
    {
        MusicCard card(media());
        QCOMPARE(card.elapsedText(), QStringLiteral("–:––"));
        QCOMPARE(card.durationText(), QStringLiteral("–:––"));
        QVERIFY(!card.slider()->isEnabled());
        QVERIFY(!card.button(QStringLiteral("goforward.10"))->isEnabled());
        QCOMPARE(card.playerText(), QStringLiteral("MUSIC / SPOTIFY"));

        play(QStringLiteral("a"), true, 125);
        QCOMPARE(card.songText(), QStringLiteral("Song a"));
        QCOMPARE(card.playerText(), QStringLiteral("MUSIC"));
        QCOMPARE(card.durationText(), QStringLiteral("2:05"));
        QCOMPARE(card.elapsedText(), QStringLiteral("0:10"));
        QVERIFY(card.slider()->isEnabled());
        QCOMPARE(card.button(QStringLiteral("playpause"))->symbol(), QStringLiteral("pause.fill"));

        card.button(QStringLiteral("goforward.30"))->click();
        QCOMPARE(card.elapsedText(), QStringLiteral("0:40"));
        QTRY_COMPARE(int(players().commands().size()), 1);
        QCOMPARE(players().commands().constLast().second.position, 40.0);
        QTRY_VERIFY(!media().mediaBusy());
        card.button(QStringLiteral("playpause"))->click();
        QTRY_COMPARE(card.button(QStringLiteral("playpause"))->symbol(), QStringLiteral("play.fill"));

        // A drag shows where the pointer is and sends nothing when the track changed meanwhile.
        QTRY_VERIFY(!media().mediaBusy());
        const int sent = int(players().commands().size());
        card.slider()->setSliderDown(true);
        card.slider()->setSliderPosition(1000);
        QCOMPARE(card.elapsedText(), QStringLiteral("1:40"));
        play(QStringLiteral("b"), true, 125);
        card.slider()->setSliderDown(false);
        QTest::qWait(50);
        QCOMPARE(int(players().commands().size()), sent);
    }

    void settingsBindTheSwitchesAndThePreview()
    {
        int previews = 0;
        MediaSettings settings(media(), model().trackToastSettings(), [&previews] { ++previews; });
        QVERIFY(settings.connectRow()->isChecked());
        QVERIFY(!settings.previewButton()->isEnabled()); // no cover yet
        players().setCover(QStringLiteral("Music"), QStringLiteral("a"), CoverServer::png());
        play(QStringLiteral("a"));
        QTRY_VERIFY(settings.previewButton()->isEnabled());
        settings.previewButton()->click();
        QCOMPARE(previews, 1);
        settings.durationControl()->button(QStringLiteral("5 Sekunden"))->click();
        QCOMPARE(model().trackToastSettings().duration(), 5.0);
        settings.connectRow()->toggleSwitch()->click();
        QVERIFY(!model().mediaEnabled());
        QVERIFY(!settings.previewButton()->isEnabled());
    }
};

int runToastTests(int argc, char** argv)
{
    ToastTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ToastTest.moc"
