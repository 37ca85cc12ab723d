#include "panel/widgets/PopupComboBox.h"

void PopupComboBox::showPopup()
{
    Q_EMIT popupShown();
    QComboBox::showPopup();
}

void PopupComboBox::hidePopup()
{
    QComboBox::hidePopup();
    Q_EMIT popupHidden();
}
