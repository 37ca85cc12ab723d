#pragma once

#include <QWidget>

class Model;
class QLabel;

// The status line under the page: the model's message or the shortcuts, and the product name.
class StatusLineView : public QWidget
{
    Q_OBJECT
public:
    explicit StatusLineView(Model& model, QWidget* parent = nullptr);

    QString text() const;
    QString trailingText() const;

private:
    void sync();

    Model& m_model;
    QLabel* m_text;
    QLabel* m_trailing;
};
