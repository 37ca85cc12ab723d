#pragma once

#include "TestSupport.h"

#include "app/PanelPages.h"
#include "model/PanelState.h"
#include "shell/widgets/PageRegistry.h"
#include "shell/widgets/RootView.h"

#include <QApplication>
#include <QLabel>

#include <memory>

// A model on the memory platform with the root view shown at one of the panel's sizes.
struct ViewRig
{
    // Set the model up first when the view must see that state from its start.
    RootView& open(QSize size = {620, 378})
    {
        model().setExpanded(true);
        makeRoot();
        root->resize(size);
        root->show();
        QApplication::processEvents();
        return *root;
    }
    // The root view over the current model, not yet shown.
    RootView& makeRoot()
    {
        pages = PageRegistry();
        registerPanelPages(pages, model());
        root = std::make_unique<RootView>(model(), pages);
        return *root;
    }
    Model& model() { return *fixture.model; }
    MemoryPlatform& memory() { return fixture.memory; }

    ModelFixture fixture;
    PageRegistry pages;
    std::unique_ptr<RootView> root;
};

// Every text a widget shows through its labels, for checks that do not care about the layout.
inline QStringList labelTexts(const QWidget* widget)
{
    QStringList texts;
    for (const QLabel* label : widget->findChildren<QLabel*>())
        texts.append(label->text());
    return texts;
}
