#pragma once

#include <QComboBox>
#include <QVariant>

// What a combo does when asked for an item it does not offer.
enum class lmIfNoItem {
    Keep,  // the current choice stays
    Clear, // no item is chosen (index -1)
};

// Chooses the item at index.
inline void lmSelectIndex(QComboBox *combo, int index, lmIfNoItem ifNone)
{
    if (index >= 0 && index < combo->count())
        combo->setCurrentIndex(index);
    else if (ifNone == lmIfNoItem::Clear)
        combo->setCurrentIndex(-1);
}

// Chooses the first item carrying data.
inline void lmSelectData(QComboBox *combo, const QVariant &data, lmIfNoItem ifNone)
{
    const int index = combo->findData(data);
    if (index >= 0 || ifNone == lmIfNoItem::Clear)
        combo->setCurrentIndex(index);
}
