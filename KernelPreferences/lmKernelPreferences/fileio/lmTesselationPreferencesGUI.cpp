#include "lmTesselationPreferencesGUI.h"

#include "lmPlatform.h"
#include "lmTesselationListViewItem.h"

#include <QCoreApplication>
#include <QDoubleValidator>
#include <QHeaderView>
#include <QMessageBox>

#include <cmath>
#include <vector>

namespace {

const float kDefaultQualityLevel = 0.05f;

const lmTypedKey<float> kTopologyTolerance{"Optimizer Topology Tolerance", 0.005f};
const lmTypedKey<int> kTopologyMethod{"Optimizer Topology Method", 0};
const lmTypedKey<float> kOffsetFactor{"Optimizer Offset Factor", 1.0f};
const lmTypedKey<std::vector<float>> kQuality{"Optimizer Teselation Quality", {kDefaultQualityLevel}};
const lmTypedKey<bool> kCheckOrientation{"Optimizer Check Orientation", true};

const lmKeyTable kKeys{kTopologyTolerance, kTopologyMethod, kOffsetFactor, kQuality, kCheckOrientation};

void showLevels(QTreeWidget *list, const std::vector<float> &levels)
{
    list->clear();
    for (float level : levels)
        list->addTopLevelItem(new lmTesselationListViewItem(level));
    list->setSortingEnabled(true);
}

std::vector<float> levelsOf(const QTreeWidget *list)
{
    std::vector<float> levels;
    for (int i = 0; i < list->topLevelItemCount(); ++i)
        if (const auto *level = dynamic_cast<const lmTesselationListViewItem *>(list->topLevelItem(i)))
            levels.push_back(level->value());
    return levels;
}

} // namespace

lmTesselationPreferencesGUII::lmTesselationPreferencesGUII()
    : QObject(nullptr),
      lmPreferencesPage(this, QCoreApplication::translate("lmPreferences", "Import"),
                        QCoreApplication::translate("lmPreferences", "Tesselation"), kKeys)
{
    // An index the combo does not offer leaves the choice as it is.
    bindings.bind(kTopologyMethod, page()->_topology, lmIfNoItem::Keep);
    bindings.bind(kTopologyTolerance, page()->_tolerance);
    bindings.bind(kOffsetFactor, page()->_offset_factor);
    bindings.bind(kCheckOrientation, page()->_check_orientation);
    bindings.bind(kQuality, page()->_quality, showLevels, levelsOf);

    page()->_tolerance->setValidator(new QDoubleValidator(1e-05, 10000.0, 5, page()->_tolerance));
    page()->_offset_factor->setValidator(new QDoubleValidator(page()->_offset_factor));
    page()->_quality->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    page()->_quality->sortByColumn(0, Qt::AscendingOrder);

    addPreferencesGUI(page());

    connect(page()->_add_button, &QAbstractButton::clicked, this, &lmTesselationPreferencesGUII::clickedAdd);
    connect(page()->_remove_button, &QAbstractButton::clicked, this, &lmTesselationPreferencesGUII::clickedRemove);
    connect(page()->_quality, &QTreeWidget::itemSelectionChanged, this,
            &lmTesselationPreferencesGUII::selectionChanged);
    connect(page()->_quality, &QTreeWidget::itemChanged, this, &lmTesselationPreferencesGUII::changedItem);
    // A level added by clickedAdd joins the sorted order once its editor closes,
    // edited or not.
    connect(page()->_quality->itemDelegate(), &QAbstractItemDelegate::closeEditor, page()->_quality,
            [list = page()->_quality] { list->setSortingEnabled(true); });
}

void lmTesselationPreferencesGUII::apply() {}

void lmTesselationPreferencesGUII::updateGUI()
{
    loadBound();
}

void lmTesselationPreferencesGUII::storeGUI()
{
    storeBound();
}

void lmTesselationPreferencesGUII::clickedAdd()
{
    // The new level stays where it was added until it has been edited.
    QTreeWidget *list = page()->_quality;
    list->setSortingEnabled(false);
    auto *level = new lmTesselationListViewItem(kDefaultQualityLevel);
    list->addTopLevelItem(level);
    list->setCurrentItem(level);
    list->editItem(level, 0);
}

void lmTesselationPreferencesGUII::clickedRemove()
{
    qDeleteAll(page()->_quality->selectedItems());
}

void lmTesselationPreferencesGUII::selectionChanged()
{
    page()->_remove_button->setEnabled(!page()->_quality->selectedItems().isEmpty());
}

void lmTesselationPreferencesGUII::changedItem(QTreeWidgetItem *item, int column)
{
    auto *level = dynamic_cast<lmTesselationListViewItem *>(item);
    if (!level || column != 0)
        return;

    bool isNumber = false;
    const float value = level->text(0).toFloat(&isNumber);
    if (isNumber && std::isfinite(value) && value > 0.0f) {
        level->setValue(value);
        page()->_quality->setSortingEnabled(true);
        return;
    }
    QMessageBox::warning(page(), lmPlatform::getVersionName(), tr("Only positive non zero values are allowed!"));
    level->setValue(level->value());
}
