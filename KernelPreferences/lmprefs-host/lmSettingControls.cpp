#include "lmSettingControls.h"

#include "lmKeyBinding.h"

#include <QAbstractButton>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QVariant>

#include <utility>
#include <vector>

namespace lmSettingControls {

QString plainText(const QString &text)
{
    if (Qt::mightBeRichText(text))
        return QTextDocumentFragment::fromHtml(text).toPlainText().simplified();
    QString plain = text;
    plain.replace(QLatin1String("&&"), QStringLiteral("\x01")).remove(QLatin1Char('&')).replace(QChar(1), QLatin1Char('&'));
    return plain.simplified();
}

bool isHidden(const QWidget *widget, const QWidget *page, Hidden how)
{
    for (const QWidget *w = widget; w && w != page; w = w->parentWidget()) {
        const QWidget *parent = w->parentWidget();
        if (const auto *stack = qobject_cast<const QStackedWidget *>(parent)) {
            // A tab page is out of sight, not gone, unless it was taken out.
            if (stack->indexOf(const_cast<QWidget *>(w)) < 0)
                return true;
            if (how == Hidden::OrOnAnotherTab && stack->currentWidget() != w)
                return true;
            continue;
        }
        if (!w->testAttribute(Qt::WA_WState_ExplicitShowHide) || !w->testAttribute(Qt::WA_WState_Hidden))
            continue;
        if (parent && parent->property("collapsed").toBool())
            continue;
        return true;
    }
    return false;
}

QList<QWidget *> boundControls(const QWidget *page)
{
    QList<QWidget *> controls;
    for (QWidget *widget : page->findChildren<QWidget *>())
        if (!lmBoundKeys(widget).isEmpty() && !isHidden(widget, page))
            controls << widget;
    return controls;
}

namespace {

// The chain of (layout, index) from layout down to the item that is widget.
bool pathTo(QLayout *layout, const QWidget *widget, std::vector<std::pair<QLayout *, int>> &path)
{
    if (!layout)
        return false;
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem *item = layout->itemAt(i);
        path.emplace_back(layout, i);
        if (item->widget() == widget || pathTo(item->layout(), widget, path))
            return true;
        path.pop_back();
    }
    return false;
}

QLabel *asLabel(QLayoutItem *item)
{
    return item ? qobject_cast<QLabel *>(item->widget()) : nullptr;
}

// The label placed just before the control: in the same grid row, as its
// form row's label, or as the widget before it in a box; a box of several
// controls ("width x height") takes the label before the box.
QLabel *neighbourLabel(const QWidget *control)
{
    const QWidget *parent = control->parentWidget();
    std::vector<std::pair<QLayout *, int>> path;
    if (!parent || !pathTo(parent->layout(), control, path))
        return nullptr;
    for (auto level = path.rbegin(); level != path.rend(); ++level) {
        QLayout *layout = level->first;
        const int index = level->second;
        QLabel *label = nullptr;
        if (auto *grid = qobject_cast<QGridLayout *>(layout)) {
            int row, column, rowSpan, columnSpan;
            grid->getItemPosition(index, &row, &column, &rowSpan, &columnSpan);
            for (int c = column - 1; c >= 0 && !label; --c)
                label = asLabel(grid->itemAtPosition(row, c));
        } else if (auto *form = qobject_cast<QFormLayout *>(layout)) {
            int row;
            QFormLayout::ItemRole role;
            form->getItemPosition(index, &row, &role);
            if (role == QFormLayout::FieldRole)
                label = asLabel(form->itemAt(row, QFormLayout::LabelRole));
        } else {
            for (int i = index - 1; i >= 0; --i)
                if (layout->itemAt(i)->widget()) {
                    label = asLabel(layout->itemAt(i));
                    break;
                }
        }
        if (label && !plainText(label->text()).isEmpty())
            return label;
    }
    return nullptr;
}

QString titleOf(const QWidget *widget)
{
    const QVariant title = widget->property("title");
    return title.userType() == QMetaType::QString ? plainText(title.toString()) : QString();
}

} // namespace

QWidget *labelWidgetOf(const QWidget *control)
{
    auto *self = const_cast<QWidget *>(control);
    if (qobject_cast<const QGroupBox *>(control))
        return self;
    if (const auto *button = qobject_cast<const QAbstractButton *>(control))
        if (!button->text().isEmpty())
            return self;
    // Forms keep a buddy label beside its control, under the same parent.
    if (const QWidget *parent = control->parentWidget())
        for (QLabel *label : parent->findChildren<QLabel *>())
            if (label->buddy() == control)
                return label;
    if (QLabel *label = neighbourLabel(control))
        return label;
    for (QWidget *w = control->parentWidget(); w; w = w->parentWidget())
        if (!titleOf(w).isEmpty())
            return w;
    return nullptr;
}

QString labelOf(const QWidget *control)
{
    const QWidget *label = labelWidgetOf(control);
    if (!label)
        return QString();
    if (const auto *text = qobject_cast<const QLabel *>(label))
        return plainText(text->text());
    if (const auto *button = qobject_cast<const QAbstractButton *>(label))
        return plainText(button->text());
    return titleOf(label);
}

void reveal(QWidget *control, const QWidget *page)
{
    for (QWidget *w = control; w && w != page; w = w->parentWidget()) {
        QWidget *parent = w->parentWidget();
        if (auto *stack = qobject_cast<QStackedWidget *>(parent)) {
            if (auto *tabs = qobject_cast<QTabWidget *>(stack->parentWidget()))
                tabs->setCurrentWidget(w);
            else
                stack->setCurrentWidget(w);
        }
        if (w != control && w->property("collapsed").toBool())
            w->setProperty("collapsed", false);
    }
}

} // namespace lmSettingControls
