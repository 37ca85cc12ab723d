#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

// The default focus length in whole minutes, stepped by one between its limits.
class FocusStepper : public QWidget
{
    Q_OBJECT
public:
    explicit FocusStepper(QWidget* parent = nullptr);

    void setMinutes(int minutes);
    int minutes() const { return m_minutes; }
    QString text() const;
    QPushButton* decreaseButton() const { return m_decrease; }
    QPushButton* increaseButton() const { return m_increase; }

Q_SIGNALS:
    void minutesChanged(int minutes);

private:
    void step(int delta);

    int m_minutes = 0;
    QLabel* m_label;
    QPushButton* m_decrease;
    QPushButton* m_increase;
};
