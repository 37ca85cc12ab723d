#pragma once

#include <QWidget>

// A rounded, slightly lighter surface that groups one topic.
class Card : public QWidget
{
    Q_OBJECT
public:
    explicit Card(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};
