#pragma once

#include "shell/PanelContent.h"

#include <QWidget>

class FullLayout;
class HeaderRow;
class Model;
class PageRegistry;
class WelcomeGlow;

// The panel's content: decides from the model what the panel shows and paints its black shape.
// The window decides the size; every state lays itself out inside it and is clipped to it.
class RootView : public QWidget
{
    Q_OBJECT
public:
    RootView(Model& model, const PageRegistry& pages, QWidget* parent = nullptr);

    PanelContent::Kind content() const { return m_content; }
    // A file drag is over the panel.
    bool targeted() const { return m_targeted; }

    HeaderRow* header() const { return m_header; }
    FullLayout* fullLayout() const { return m_full; }
    QWidget* miniOverview() const { return m_mini; }
    QWidget* onboardingPane() const { return m_onboarding; }
    WelcomeGlow* welcomeGlow() const { return m_glow; }
    // The smallest size at which the current content shows without clipping.
    QSize contentMinimum() const;

    QSize sizeHint() const override { return {620, 378}; }
    QSize minimumSizeHint() const override { return {0, 0}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void refresh();
    void place();
    void setTargeted(bool targeted);

    Model& m_model;
    PanelContent::Kind m_content = PanelContent::nothing;
    bool m_targeted = false;
    WelcomeGlow* m_glow;
    QWidget* m_framed;
    HeaderRow* m_header;
    QWidget* m_onboarding;
    QWidget* m_mini;
    FullLayout* m_full;
};
