#pragma once

#include <QWidget>

class Model;
class QVariantAnimation;

// The first-run greeting: a soft coloured light circling the notch while the intro runs.
class WelcomeGlow : public QWidget
{
    Q_OBJECT
public:
    explicit WelcomeGlow(Model& model, QWidget* parent = nullptr);

    bool isAnimating() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    Model& m_model;
    QVariantAnimation* m_turn;
    qreal m_phase = 0;
};
