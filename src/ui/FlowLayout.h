#pragma once

#include <QLayout>
#include <QList>

// Lays its items out left to right and starts a new line when the width runs out, so a row of
// chips stays whole in the narrow panel layouts.
class FlowLayout : public QLayout
{
public:
    explicit FlowLayout(QWidget* parent = nullptr, int spacing = 4);
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override;
    int count() const override { return int(m_items.size()); }
    QLayoutItem* itemAt(int index) const override { return m_items.value(index); }
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return arrange(QRect(0, 0, width, 0), false); }
    QSize minimumSize() const override;
    QSize sizeHint() const override { return minimumSize(); }
    void setGeometry(const QRect& rect) override;

private:
    // Places the items inside `rect` (only measures when `apply` is false); answers the height used.
    int arrange(const QRect& rect, bool apply) const;

    QList<QLayoutItem*> m_items;
    int m_gap;
};
