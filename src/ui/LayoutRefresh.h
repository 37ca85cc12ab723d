#pragma once

class QWidget;

// Forgets every cached size below a widget. Layouts of hidden states cache the sizes their
// controls had before the panel's style sheet reached them, and Qt only corrects that for visible
// layouts; without this a page shown later is laid out at the unstyled, wider minimum and clipped.
class LayoutRefresh
{
public:
    static void refresh(QWidget* root);
};
