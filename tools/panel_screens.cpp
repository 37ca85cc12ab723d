// Renders the panel's views into PNG files for docs/screenshots: every state the root view can
// show, at the sizes the window gives it. A tool, not a test: it prints the paths it wrote.
//
//   panel_screens <folder>

#include "app/PanelPages.h"
#include "focus/widgets/ActivityPage.h"
#include "model/Model.h"
#include "platform/Permissions.h"
#include "platform/memory/MemoryPlatform.h"
#include "productivity/DeviceSearch.h"
#include "productivity/Productivity.h"
#include "settings/Defaults.h"
#include "settings/Preferences.h"
#include "setup/OnboardingState.h"
#include "setup/PermissionStore.h"
#include "shell/widgets/PageRegistry.h"
#include "shell/widgets/RootView.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QLinearGradient>
#include <QLocale>
#include <QPainter>
#include <QStandardPaths>
#include <QTextStream>
#include <QThread>
#include <QUuid>

#include <functional>

namespace {

struct Shot
{
    QString name;
    QSize size;
    std::function<void(Model&, MemoryPlatform&)> prepare;
};

void setLayout(Model& model, PanelLayout layout)
{
    model.preferences().update([layout](PreferenceValues& values) { values.layout = layout; });
}

void addWorkspaces(Model& model)
{
    Productivity& store = model.productivity();
    store.createWorkspace(
        QStringLiteral("Entwicklung"),
        {QUrl::fromLocalFile(QStringLiteral("/home/nutzer/Projekte/brenlow")),
         QUrl::fromLocalFile(QStringLiteral("/usr/share/applications/org.kde.kate.desktop")),
         QUrl::fromLocalFile(QStringLiteral("/usr/share/applications/org.kde.konsole.desktop"))});
    store.createWorkspace(QStringLiteral("Steuern 2025"),
                          {QUrl::fromLocalFile(QStringLiteral("/home/nutzer/Dokumente/Steuern")),
                           QUrl::fromLocalFile(QStringLiteral("/home/nutzer/Dokumente/Belege.ods"))});
    store.createWorkspace(QStringLiteral("Musik machen"),
                          {QUrl::fromLocalFile(QStringLiteral("/usr/share/applications/ardour.desktop"))});
}

// The panel as it hangs from the top of a dark desktop, so its rounded lower corners show.
QImage onDesktop(const QImage& panel)
{
    const int margin = 40;
    QImage desktop(panel.width() + 2 * margin, panel.height() + margin, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&desktop);
    QLinearGradient wallpaper(0, 0, desktop.width(), desktop.height());
    wallpaper.setColorAt(0, QColor(58, 74, 104));
    wallpaper.setColorAt(1, QColor(112, 86, 120));
    painter.fillRect(desktop.rect(), wallpaper);
    painter.drawImage(margin, 0, panel);
    return desktop;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    // Pictured for a German desktop: times of day read "13:11".
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("docs/screenshots");
    QDir().mkpath(folder);

    const QList<Shot> shots = {
        {QStringLiteral("closed"),
         {160, 24},
         [](Model& model, MemoryPlatform&) { model.setExpanded(false); }},
        {QStringLiteral("welcome-glow"),
         {184, 40},
         [](Model& model, MemoryPlatform&) {
             model.setNotchWidth(160);
             model.setNotchHeight(24);
             model.setIntroActive(true);
         }},
        {QStringLiteral("overview-balanced"),
         {620, 378},
         [](Model& model, MemoryPlatform&) { setLayout(model, PanelLayout::balanced); }},
        {QStringLiteral("overview-wide"),
         {800, 378},
         [](Model& model, MemoryPlatform&) {
             setLayout(model, PanelLayout::wide);
             model.setDuration(45);
             model.toggleTimer();
         }},
        {QStringLiteral("overview-tall"),
         {520, 556},
         [](Model& model, MemoryPlatform&) { setLayout(model, PanelLayout::tall); }},
        {QStringLiteral("mini"),
         {440, 112},
         [](Model& model, MemoryPlatform&) {
             model.productivity().setMini(true);
             model.setPage(Page::home);
         }},
        {QStringLiteral("settings-ansicht"),
         {620, 466},
         [](Model& model, MemoryPlatform&) { model.setPage(Page::settings); }},
        {QStringLiteral("settings-bedienung"),
         {620, 466},
         [](Model& model, MemoryPlatform&) {
             model.setSettingsSection(QStringLiteral("Bedienung"));
             model.setHotkeyStatus(QStringLiteral("⌃ V öffnet den Copy-Verlauf."));
             model.setPage(Page::settings);
         }},
        {QStringLiteral("settings-fokus-tall"),
         {520, 556},
         [](Model& model, MemoryPlatform&) {
             setLayout(model, PanelLayout::tall);
             model.setSettingsSection(QStringLiteral("Fokus & Daten"));
             model.setPage(Page::settings);
         }},
        {QStringLiteral("onboarding-step1"),
         {640, 528},
         [](Model& model, MemoryPlatform&) {
             model.onboarding().setStep(0);
             model.setPage(Page::onboarding);
         }},
        {QStringLiteral("onboarding-step2"),
         {640, 528},
         [](Model& model, MemoryPlatform&) {
             model.onboarding().setStep(1);
             model.setPage(Page::onboarding);
         }},
        {QStringLiteral("onboarding-step6"),
         {640, 528},
         [](Model& model, MemoryPlatform&) {
             model.onboarding().setStep(5);
             model.setPage(Page::onboarding);
         }},
        {QStringLiteral("onboarding-step3"),
         {640, 528},
         [](Model& model, MemoryPlatform& memory) {
             memory.permissions.setAutomation(QStringLiteral("com.spotify.client"),
                                              AutomationAccess::allowed);
             model.onboarding().setStep(2);
             model.setPage(Page::onboarding);
         }},
        {QStringLiteral("onboarding-step5"),
         {640, 528},
         [](Model& model, MemoryPlatform&) {
             model.onboarding().setStep(4);
             model.setPage(Page::onboarding);
             model.setMessage(QStringLiteral(
                 "Systemeinstellungen → Datenschutz & Sicherheit → Bildschirmaufnahme öffnen."));
         }},
        {QStringLiteral("workspaces-balanced"),
         {620, 466},
         [](Model& model, MemoryPlatform&) {
             addWorkspaces(model);
             model.setPage(Page::workspaces);
         }},
        {QStringLiteral("workspaces-wide"),
         {800, 426},
         [](Model& model, MemoryPlatform&) {
             setLayout(model, PanelLayout::wide);
             addWorkspaces(model);
             model.productivity().editWorkspace(model.productivity().presets().first().id);
             model.setPage(Page::workspaces);
         }},
        {QStringLiteral("workspaces-tall"),
         {520, 556},
         [](Model& model, MemoryPlatform&) {
             setLayout(model, PanelLayout::tall);
             addWorkspaces(model);
             model.productivity().setWorkspaceDraft(QStringLiteral("Schreiben"));
             model.productivity().addWorkspacePaths(
                 {QUrl::fromLocalFile(QStringLiteral("/home/nutzer/Texte")),
                  QUrl::fromLocalFile(
                      QStringLiteral("/usr/share/applications/org.gnome.TextEditor.desktop"))});
             model.setMessage(QStringLiteral("Nicht geöffnet: Archiv"));
             model.setPage(Page::workspaces);
         }},
        {QStringLiteral("workspaces-empty"),
         {620, 466},
         [](Model& model, MemoryPlatform&) { model.setPage(Page::workspaces); }},
        {QStringLiteral("activity"),
         {620, 466},
         [](Model& model, MemoryPlatform& memory) {
             memory.clock.advance(3 * 3600);
             model.addNotice(QStringLiteral("Gerät verbunden"), QStringLiteral("AirPods Pro"));
             memory.clock.advance(1800);
             model.addNotice(QStringLiteral("Fokus geschafft"), QStringLiteral("Zeit für eine Pause."));
             model.setPage(Page::events);
         }},
        {QStringLiteral("history-tall"),
         {520, 556},
         [](Model& model, MemoryPlatform& memory) {
             setLayout(model, PanelLayout::tall);
             memory.pasteboard.copyFromOutside(QStringLiteral("https://example.org/angebot"));
             model.pollClipboard();
             memory.pasteboard.copyFromOutside(QStringLiteral("Treffen am Donnerstag um zehn"));
             model.pollClipboard();
             model.setPage(Page::clipboard);
         }},
        {QStringLiteral("shelf"),
         {620, 466},
         [](Model& model, MemoryPlatform&) {
             model.addFiles({QUrl::fromLocalFile(QStringLiteral("/home/user/Dokumente/Angebot 2026.pdf")),
                             QUrl::fromLocalFile(QStringLiteral("/home/user/Bilder/Skizze.png")),
                             QUrl::fromLocalFile(QStringLiteral("/usr/share/applications/xterm.desktop"))});
             model.setPage(Page::shelf);
         }},
        {QStringLiteral("notes"),
         {620, 466},
         [](Model& model, MemoryPlatform&) {
             model.productivity().addNote(QStringLiteral("Angebot bis Freitag schicken"));
             model.productivity().addNote(QStringLiteral("Zahnarzt anrufen"));
             model.productivity().togglePin(QStringLiteral("Zahnarzt anrufen"));
             model.productivity().setNoteDraft(
                 QStringLiteral("Ideen für den Vortrag:\n– Einstieg mit einer Frage"));
             model.setPage(Page::notes);
         }},
        {QStringLiteral("search"),
         {620, 466},
         [](Model& model, MemoryPlatform& memory) {
             memory.fileSearch.files = {QStringLiteral("/etc/hostname"), QStringLiteral("/etc/hosts")};
             model.deviceSearch().setText(QStringLiteral("host"));
             memory.scheduler.advance(0.25);
             model.setPage(Page::search);
         }},
    };

    QTextStream out(stdout);
    for (const Shot& shot : shots) {
        MemoryPlatform memory;
        // Morning, local time, so the clock reads the same on every machine.
        memory.clock.setNow(QDateTime(QDate(2026, 3, 7), QTime(9, 41)).toUTC());
        const QString domain =
            QStringLiteral("Brenlow.Screens.") + QUuid::createUuid().toString(QUuid::WithoutBraces);
        {
            Defaults defaults(domain);
            Model model(defaults, memory.platform(), false, memory.pasteboard);
            model.setExpanded(true);
            shot.prepare(model, memory);

            QWidget window;
            window.setWindowFlags(Qt::FramelessWindowHint);
            window.setAttribute(Qt::WA_TranslucentBackground);
            window.resize(shot.size);
            PageRegistry pages;
            registerPanelPages(pages, model);
            RootView root(model, pages, &window);
            root.setGeometry(QRect(QPoint(0, 0), shot.size));
            window.show();
            QApplication::processEvents();
            // Permission checks answer from their worker thread.
            QDeadlineTimer deadline(2000);
            while (model.permissions().checking() && !deadline.hasExpired()) {
                QThread::msleep(5);
                QApplication::processEvents();
            }

            const QString path = QDir(folder).filePath(shot.name + QStringLiteral(".png"));
            onDesktop(window.grab().toImage()).save(path);
            const QSize needed = root.contentMinimum();
            out << path;
            if (needed.width() > shot.size.width() || needed.height() > shot.size.height())
                out << "  (clipped: needs " << needed.width() << "x" << needed.height() << ")";
            out << Qt::endl;
        }
        Defaults(domain).removeDomain();
    }
    return 0;
}
