#pragma once

#include <QAbstractButton>

// A round borderless button that shows one symbol; its hint is the tooltip and accessible name.
class SymbolButton : public QAbstractButton
{
    Q_OBJECT
public:
    enum Style {
        flat,   // glyph only, a soft circle on hover and while checked
        filled, // a white disc with a dark glyph, for the main action of a card
        tinted, // a faint disc, for secondary actions of a card
    };

    SymbolButton(const QString& symbol, const QString& hint, int diameter = 26, QWidget* parent = nullptr);

    QString symbol() const { return m_symbol; }
    void setSymbol(const QString& symbol);
    void setHint(const QString& hint);
    void setStyle(Style style);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QString m_symbol;
    int m_diameter;
    Style m_style = flat;
    bool m_hovered = false;
};
