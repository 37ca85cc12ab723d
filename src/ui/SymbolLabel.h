#pragma once

#include <QLabel>

// One symbol of the table as a glyph in the label's text colour.
class SymbolLabel : public QLabel
{
    Q_OBJECT
public:
    explicit SymbolLabel(const QString& symbol = QString(), int pixelSize = 16, QWidget* parent = nullptr);

    QString symbol() const { return m_symbol; }
    void setSymbol(const QString& symbol);

private:
    QString m_symbol;
    int m_pixelSize;
};
