#pragma once

#include "model/Page.h"
#include "platform/Platform.h"

#include <QObject>

#include <memory>
#include <optional>

class Defaults;
class Model;

// Owns the model, the panel window and the input services for the life of the process.
class AppDelegate : public QObject
{
    Q_OBJECT
public:
    AppDelegate(Defaults& defaults, Platform platform, QObject* parent = nullptr);
    ~AppDelegate() override;

    Model& model() { return *m_model; }

    // Brings everything up in order; the closed panel ends over the notch.
    void launch();
    // Takes down what launch() installed; state was written when it changed.
    void terminate();
    // A second start of the program: opens the panel, not from hovering.
    void reopen();

    void expand(std::optional<Page> page, bool fromHover);
    void collapse();
    void toggle();
    void pollPointer();
    void reposition();
    void configureShortcut();
    void welcome(bool replay);

private:
    Platform m_platform;
    std::unique_ptr<Model> m_model;
};
