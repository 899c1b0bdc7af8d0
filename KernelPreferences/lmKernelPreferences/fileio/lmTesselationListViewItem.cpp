#include "lmTesselationListViewItem.h"

lmTesselationListViewItem::lmTesselationListViewItem(float value) : QTreeWidgetItem(UserType), m_value(value)
{
    setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable);
    setText(0, QString::number(value, 'g', 6));
}

void lmTesselationListViewItem::setValue(float value)
{
    m_value = value;
    setText(0, QString::number(value, 'g', 6));
}

bool lmTesselationListViewItem::operator<(const QTreeWidgetItem &other) const
{
    if (const auto *level = dynamic_cast<const lmTesselationListViewItem *>(&other))
        return m_value < level->m_value;
    return QTreeWidgetItem::operator<(other);
}
