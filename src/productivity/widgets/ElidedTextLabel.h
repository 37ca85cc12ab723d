#pragma once

#include "ui/TextLabel.h"

// A one-line label that ends in "…" when its row is too narrow, instead of cutting a name in
// half; the whole text stays in fullText().
class ElidedTextLabel : public TextLabel
{
    Q_OBJECT
public:
    ElidedTextLabel(const QString& text, int pixelSize, Tone tone = primary,
                    QFont::Weight weight = QFont::Normal, QWidget* parent = nullptr);

    const QString& fullText() const { return m_fullText; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void elide();

    QString m_fullText;
};
