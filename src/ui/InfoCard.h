#pragma once

#include "ui/Card.h"

class QLabel;
class SymbolButton;
class SymbolLabel;

// A small overview card: a symbol, two lines of text and, where it has one, a button.
class InfoCard : public Card
{
    Q_OBJECT
public:
    explicit InfoCard(QWidget* parent = nullptr);

    void setSymbol(const QString& symbol);
    void setLines(const QString& first, const QString& second);
    QString firstLine() const;
    QString secondLine() const;
    // Adds the card's button at the trailing side.
    SymbolButton* addButton(const QString& symbol, const QString& hint);

private:
    SymbolLabel* m_symbol;
    QLabel* m_first;
    QLabel* m_second;
};
