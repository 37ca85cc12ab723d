#pragma once

#include <QWidget>

// A row of capsules, one per tour step; the current one is long and lit.
class StepCapsules : public QWidget
{
    Q_OBJECT
public:
    StepCapsules(int count, QWidget* parent = nullptr);

    void setCurrent(int step);
    int current() const { return m_current; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_count;
    int m_current = 0;
};
