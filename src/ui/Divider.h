#pragma once

#include <QWidget>

// A thin horizontal rule between groups of settings.
class Divider : public QWidget
{
    Q_OBJECT
public:
    explicit Divider(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};
