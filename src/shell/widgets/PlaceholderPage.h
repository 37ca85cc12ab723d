#pragma once

#include "model/Page.h"

#include <QWidget>

class QLabel;

// A page whose content comes with its own subsystem: the page's symbol, title and headline.
class PlaceholderPage : public QWidget
{
    Q_OBJECT
public:
    PlaceholderPage(Page page, const QString& headline, QWidget* parent = nullptr);

    void setHeadline(const QString& headline);
    QString titleText() const;
    QString headlineText() const;

private:
    QLabel* m_title;
    QLabel* m_headline;
};
