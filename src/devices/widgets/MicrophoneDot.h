#pragma once

#include <QWidget>

// A small circle that lights up while the default microphone is in use.
class MicrophoneDot : public QWidget
{
    Q_OBJECT
public:
    explicit MicrophoneDot(QWidget* parent = nullptr);

    void setActive(bool active);
    bool isActive() const { return m_active; }
    QSize sizeHint() const override { return {12, 12}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_active = false;
};
