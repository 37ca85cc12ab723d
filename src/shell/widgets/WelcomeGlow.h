#pragma once

#include <QWidget>

class PanelState;
class QVariantAnimation;

// The first-run greeting: a soft coloured light circling the notch while the intro runs.
class WelcomeGlow : public QWidget
{
    Q_OBJECT
public:
    explicit WelcomeGlow(PanelState& panel, QWidget* parent = nullptr);

    bool isAnimating() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    PanelState& m_panel;
    QVariantAnimation* m_turn;
    qreal m_phase = 0;
};
