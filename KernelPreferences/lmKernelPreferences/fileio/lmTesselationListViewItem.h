#pragma once

#include <QTreeWidgetItem>

// One quality level of the tessellation list: the tolerance is kept as a
// number beside its text, so the list sorts numerically and an invalid edit
// can be reverted to the last accepted value.
class lmTesselationListViewItem : public QTreeWidgetItem
{
public:
    explicit lmTesselationListViewItem(float value);

    float value() const { return m_value; }
    // Sets the number and shows it.
    void setValue(float value);

    bool operator<(const QTreeWidgetItem &other) const override;

private:
    float m_value;
};
