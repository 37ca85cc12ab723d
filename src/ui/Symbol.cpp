#include "ui/Symbol.h"

#include <QFile>
#include <QFontDatabase>
#include <QFontInfo>

namespace {

struct Entry
{
    const char* name;
    char16_t codePoint;
};

// Names follow the pages; glyphs are the closest Material Icons.
constexpr Entry table[] = {
    {"pin.fill", 0xf10d},                           // push_pin
    {"menubar.rectangle", 0xe069},                  // web_asset
    {"camera.viewfinder", 0xe412},                  // photo_camera
    {"slider.horizontal.3", 0xe429},                // tune
    {"rectangle.compress.vertical", 0xe5d6},        // unfold_less
    {"xmark", 0xe5cd},                              // close
    {"trash", 0xe872},                              // delete
    {"star", 0xe83a},                               // star_border
    {"star.fill", 0xe838},                          // star
    {"ellipsis", 0xe5d3},                           // more_horiz
    {"square.grid.2x2", 0xe9b0},                    // grid_view
    {"magnifyingglass", 0xe8b6},                    // search
    {"tray", 0xe156},                               // inbox
    {"doc.on.clipboard", 0xe14f},                   // content_paste
    {"note.text", 0xf1fc},                          // sticky_note_2
    {"square.stack.3d.up", 0xe53b},                 // layers
    {"command", 0xeae7},                            // keyboard_command_key
    {"timer", 0xe425},                              // timer
    {"play.fill", 0xe037},                          // play_arrow
    {"pause.fill", 0xe034},                         // pause
    {"arrow.counterclockwise", 0xe042},             // replay
    {"arrow.clockwise", 0xe5d5},                    // refresh
    {"mic", 0xe029},                                // mic
    {"mic.slash", 0xe02b},                          // mic_off
    {"person.crop.rectangle", 0xe851},              // account_box
    {"bell.badge", 0xe7f7},                         // notifications_active
    {"rectangle.topthird.inset.filled", 0xe051},    // web
    {"checkmark", 0xe5ca},                          // check
    {"checkmark.circle.fill", 0xe86c},              // check_circle
    {"circle.dashed", 0xef64},                      // pending
    {"rectangle.dashed", 0xe162},                   // select_all
    {"hand.raised", 0xe764},                        // back_hand
    {"tray.and.arrow.down", 0xe168},                // move_to_inbox
    {"arrow.up.left.and.arrow.down.right", 0xf1ce}, // open_in_full
    {"battery.100percent.bolt", 0xe1a3},            // battery_charging_full
    {"battery.75percent", 0xebd4},                  // battery_5_bar
    {"music.note", 0xe405},                         // music_note
    {"gobackward.30", 0xe05a},                      // replay_30
    {"gobackward.10", 0xe059},                      // replay_10
    {"goforward.10", 0xe056},                       // forward_10
    {"goforward.30", 0xe057},                       // forward_30
    {"backward.end.fill", 0xe045},                  // skip_previous
    {"forward.end.fill", 0xe044},                   // skip_next
    {"waveform", 0xe1b8},                           // graphic_eq
    {"location", 0xe0c8},                           // location_on
    {"cloud.sun", 0xe430},                          // wb_sunny
    {"video", 0xe04b},                              // videocam
    {"folder", 0xe2c7},                             // folder
    {"square.and.arrow.up", 0xe80d},                // share
    {"doc", 0xe24d},                                // insert_drive_file
    {"app", 0xe5c3},                                // apps
    {"plus", 0xe145},                               // add
    {"rectangle.split.3x1", 0xe8ec},                // view_column
    {"rectangle.split.2x1", 0xe8f1},                // view_quilt
    {"rectangle.split.1x2", 0xe8e9},                // view_agenda
    {"sun.max.fill", 0xe81a},                       // sunny
    {"moon.stars.fill", 0xef44},                    // bedtime
    {"cloud.sun.fill", 0xe3dd},                     // filter_drama
    {"cloud.moon.fill", 0xea46},                    // nights_stay
    {"cloud.fill", 0xe2bd},                         // cloud
    {"cloud.fog.fill", 0xe818},                     // foggy
    {"cloud.rain.fill", 0xf1ad},                    // umbrella
    {"cloud.snow.fill", 0xe810},                    // cloudy_snowing
    {"cloud.bolt.rain.fill", 0xebdb},               // thunderstorm
    {"cloud", 0xe2c0},                              // cloud_queue
};

} // namespace

std::optional<char16_t> Symbol::codePoint(const QString& name)
{
    for (const Entry& entry : table) {
        if (name == QLatin1String(entry.name))
            return entry.codePoint;
    }
    return std::nullopt;
}

QStringList Symbol::names()
{
    QStringList names;
    for (const Entry& entry : table)
        names.append(QString::fromLatin1(entry.name));
    return names;
}

bool Symbol::ensureFont()
{
    const QString family = QString::fromLatin1(fontFamily);
    if (QFontDatabase::families().contains(family))
        return true;
    if (!QFile::exists(QString::fromLatin1(fontPath)))
        return false;
    const int id = QFontDatabase::addApplicationFont(QString::fromLatin1(fontPath));
    return id >= 0 && QFontDatabase::applicationFontFamilies(id).contains(family);
}

std::optional<QFont> Symbol::font(int pixelSize)
{
    QFont font(QString::fromLatin1(fontFamily));
    font.setPixelSize(pixelSize);
    font.setStyleStrategy(QFont::NoFontMerging);
    if (QFontInfo(font).family() != QLatin1String(fontFamily))
        return std::nullopt;
    return font;
}

QString Symbol::text(const QString& name, bool fontAvailable)
{
    const auto glyph = codePoint(name);
    if (!fontAvailable || !glyph)
        return name;
    return QString(QChar(*glyph));
}
