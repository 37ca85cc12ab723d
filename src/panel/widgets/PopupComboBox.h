#pragma once

#include <QComboBox>

// A combo box that says when its list is open, so the panel can stay open meanwhile.
class PopupComboBox : public QComboBox
{
    Q_OBJECT
public:
    using QComboBox::QComboBox;

    void showPopup() override;
    void hidePopup() override;

Q_SIGNALS:
    void popupShown();
    void popupHidden();
};
