#pragma once

#include "TestSupport.h"

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
        root = std::make_unique<RootView>(model());
        root->resize(size);
        root->show();
        QApplication::processEvents();
        return *root;
    }
    Model& model() { return *fixture.model; }
    MemoryPlatform& memory() { return fixture.memory; }

    ModelFixture fixture;
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
