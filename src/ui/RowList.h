#pragma once

#include <QAbstractButton>
#include <QLayout>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>

class QVBoxLayout;

// A page's list of row widgets in a layout: emptied for a rebuild, and its rows' parts found again.
class RowList
{
public:
    // Takes every row out; a row may be the sender of the click that changed the list, so it is
    // hidden now and deleted later.
    static void clear(QLayout* rows);

    // The rows scrolling vertically, above a stretch, with `empty` (the list's empty state, or
    // none) above them.
    static QWidget* scrolling(QVBoxLayout* rows, int spacing, QWidget* empty = nullptr);

    // The text of the child with that object name in each row, in row order; rows without one
    // are passed over.
    template <typename Child, typename Text>
    static QStringList texts(const QLayout* rows, const QString& name, Text text)
    {
        QStringList found;
        for (int i = 0; i < rows->count(); ++i) {
            if (QWidget* row = rows->itemAt(i)->widget()) {
                if (const Child* child = row->findChild<Child*>(name))
                    found.append(std::invoke(text, child));
            }
        }
        return found;
    }

    // The button in one row whose text, or tool tip for a symbol button, is that text.
    template <typename Button = QAbstractButton>
    static Button* button(const QLayout* rows, int row, const QString& text)
    {
        QLayoutItem* item = rows->itemAt(row);
        if (!item || !item->widget())
            return nullptr;
        for (Button* button : item->widget()->findChildren<Button*>()) {
            if (button->text() == text || button->toolTip() == text)
                return button;
        }
        return nullptr;
    }
};
