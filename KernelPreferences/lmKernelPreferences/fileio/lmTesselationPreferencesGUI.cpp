#include "lmTesselationPreferencesGUI.h"

#include "lmKeyTable.h"
#include "lmMessageHelpers.h"
#include "lmPlatform.h"
#include "lmTesselationListViewItem.h"

#include <QCoreApplication>
#include <QDoubleValidator>
#include <QHeaderView>
#include <QMessageBox>

#include <cmath>
#include <vector>

namespace {

const char *const kTopologyTolerance = "Optimizer Topology Tolerance";
const char *const kTopologyMethod = "Optimizer Topology Method";
const char *const kOffsetFactor = "Optimizer Offset Factor";
const char *const kQuality = "Optimizer Teselation Quality";
const char *const kCheckOrientation = "Optimizer Check Orientation";

const float kDefaultQualityLevel = 0.05f;

const lmKeyTable kKeys{
    lmKey<float>(kTopologyTolerance, 0.005f),
    lmKey<int>(kTopologyMethod, 0),
    lmKey<float>(kOffsetFactor, 1.0f),
    lmKey<std::vector<float>>(kQuality, std::vector<float>{kDefaultQualityLevel}),
    lmKey<bool>(kCheckOrientation, true),
};

QString numberText(float value)
{
    return QString::number(value, 'g', 6);
}

} // namespace

lmTesselationPreferencesGUII::lmTesselationPreferencesGUII()
    : QObject(nullptr),
      lmPreferences(QCoreApplication::translate("lmPreferences", "Import"),
                    QCoreApplication::translate("lmPreferences", "Tesselation")),
      m_page(new lmTesselationPreferencesGUIW)
{
    m_page->_tolerance->setValidator(new QDoubleValidator(1e-05, 10000.0, 5, m_page->_tolerance));
    m_page->_offset_factor->setValidator(new QDoubleValidator(m_page->_offset_factor));
    m_page->_quality->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_page->_quality->sortByColumn(0, Qt::AscendingOrder);

    addPreferencesGUI(m_page);

    connect(m_page->_add_button, &QAbstractButton::clicked, this, &lmTesselationPreferencesGUII::clickedAdd);
    connect(m_page->_remove_button, &QAbstractButton::clicked, this, &lmTesselationPreferencesGUII::clickedRemove);
    connect(m_page->_quality, &QTreeWidget::itemSelectionChanged, this,
            &lmTesselationPreferencesGUII::selectionChanged);
    connect(m_page->_quality, &QTreeWidget::itemChanged, this, &lmTesselationPreferencesGUII::changedItem);
    // A level added by clickedAdd joins the sorted order once its editor closes,
    // edited or not.
    connect(m_page->_quality->itemDelegate(), &QAbstractItemDelegate::closeEditor, m_page->_quality,
            [list = m_page->_quality] { list->setSortingEnabled(true); });
}

lmTesselationPreferencesGUII::~lmTesselationPreferencesGUII()
{
    kKeys.removeFrom(getData());
    subPreferencesGUI(m_page);
    delete m_page;
}

void lmTesselationPreferencesGUII::setDefault(lmMessage &, bool overwrite)
{
    kKeys.writeDefaults(getData(), overwrite);
}

void lmTesselationPreferencesGUII::apply() {}

void lmTesselationPreferencesGUII::updateGUI()
{
    const lmMessage &data = getData();
    lmTesselationPreferencesGUIW *page = m_page;

    m_loaded.clear();
    int method = 0;
    if (getFromMessage(data, kTopologyMethod, method)) {
        if (method >= 0 && method < page->_topology->count())
            page->_topology->setCurrentIndex(method);
        m_loaded.loaded(kTopologyMethod, page->_topology, method);
    }
    float number = 0.0f;
    if (getFromMessage(data, kTopologyTolerance, number))
        page->_tolerance->setText(numberText(number));
    if (getFromMessage(data, kOffsetFactor, number))
        page->_offset_factor->setText(numberText(number));
    bool checkOrientation = false;
    if (getFromMessage(data, kCheckOrientation, checkOrientation))
        page->_check_orientation->setChecked(checkOrientation);

    std::vector<float> levels;
    if (getFromMessage(data, kQuality, levels)) {
        page->_quality->clear();
        for (float level : levels)
            page->_quality->addTopLevelItem(new lmTesselationListViewItem(level));
        page->_quality->setSortingEnabled(true);
    }
}

void lmTesselationPreferencesGUII::storeGUI()
{
    lmMessage &data = getData();
    const lmTesselationPreferencesGUIW *page = m_page;

    std::vector<float> levels;
    for (int i = 0; i < page->_quality->topLevelItemCount(); ++i)
        if (const auto *level = dynamic_cast<const lmTesselationListViewItem *>(page->_quality->topLevelItem(i)))
            levels.push_back(level->value());

    // Text that is no number stores 0.
    if (!setToMessage(data, kTopologyTolerance, page->_tolerance->text().toFloat(), true))
        addUnchanged(kTopologyTolerance);
    if (!setToMessage(data, kTopologyMethod, m_loaded.value(kTopologyMethod, page->_topology, page->_topology->currentIndex()),
                      true))
        addUnchanged(kTopologyMethod);
    if (!setToMessage(data, kOffsetFactor, page->_offset_factor->text().toFloat(), true))
        addUnchanged(kOffsetFactor);
    if (!setToMessage(data, kQuality, levels, true))
        addUnchanged(kQuality);
    if (!setToMessage(data, kCheckOrientation, page->_check_orientation->isChecked(), true))
        addUnchanged(kCheckOrientation);
}

void lmTesselationPreferencesGUII::clickedAdd()
{
    // The new level stays where it was added until it has been edited.
    QTreeWidget *list = m_page->_quality;
    list->setSortingEnabled(false);
    auto *level = new lmTesselationListViewItem(kDefaultQualityLevel);
    list->addTopLevelItem(level);
    list->setCurrentItem(level);
    list->editItem(level, 0);
}

void lmTesselationPreferencesGUII::clickedRemove()
{
    qDeleteAll(m_page->_quality->selectedItems());
}

void lmTesselationPreferencesGUII::selectionChanged()
{
    m_page->_remove_button->setEnabled(!m_page->_quality->selectedItems().isEmpty());
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
        m_page->_quality->setSortingEnabled(true);
        return;
    }
    QMessageBox::warning(m_page, lmPlatform::getVersionName(), tr("Only positive non zero values are allowed!"));
    level->setValue(level->value());
}
