#include "QLMCollapsibleFrame.h"

#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

QLMCollapsibleFrame::QLMCollapsibleFrame(QWidget *parent) : QFrame(parent)
{
    setFrameShape(QFrame::StyledPanel);
    setContentsMargins(0, titleHeight(), 0, 0);
}

QLMCollapsibleFrame::~QLMCollapsibleFrame() = default;

int QLMCollapsibleFrame::titleHeight() const
{
    return fontMetrics().height() + 8;
}

void QLMCollapsibleFrame::setTitle(const QString &title)
{
    m_title = title;
    update();
}

void QLMCollapsibleFrame::setCollapsed(bool collapsed)
{
    if (collapsed == m_collapsed)
        return;
    m_collapsed = collapsed;
    if (collapsed) {
        // Remember what was visible so that widgets hidden for other reasons
        // (edition rules) stay hidden when the body opens again. The children
        // are watched while the body is closed: a page that shows or hides one
        // meanwhile gets its wish when the body opens.
        m_hiddenByCollapse.clear();
        m_watched.clear();
        for (QWidget *child : findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (!child->isHidden()) {
                m_hiddenByCollapse.append(child);
                hideForCollapse(child);
            }
            child->installEventFilter(this);
            m_watched.append(child);
        }
    } else {
        for (const QPointer<QWidget> &child : m_watched)
            if (child)
                child->removeEventFilter(this);
        m_watched.clear();
        for (const QPointer<QWidget> &child : m_hiddenByCollapse)
            if (child)
                child->show();
        m_hiddenByCollapse.clear();
    }
    updateGeometry();
    update();
    emit collapsedChanged(collapsed);
}

// A hide that is not marked explicit: a later hide() by the page is then not
// swallowed as a no-op but reaches eventFilter.
void QLMCollapsibleFrame::hideForCollapse(QWidget *child)
{
    m_hidingForCollapse = true;
    child->hide();
    child->setAttribute(Qt::WA_WState_ExplicitShowHide, false);
    m_hidingForCollapse = false;
}

bool QLMCollapsibleFrame::eventFilter(QObject *watched, QEvent *event)
{
    if (m_collapsed && !m_hidingForCollapse) {
        QWidget *child = qobject_cast<QWidget *>(watched);
        if (child && event->type() == QEvent::ShowToParent) {
            if (!m_hiddenByCollapse.contains(child))
                m_hiddenByCollapse.append(child);
            hideForCollapse(child);
        } else if (child && event->type() == QEvent::HideToParent) {
            m_hiddenByCollapse.removeAll(child);
        }
    }
    return QFrame::eventFilter(watched, event);
}

QSize QLMCollapsibleFrame::sizeHint() const
{
    QSize hint = QFrame::sizeHint();
    hint.setWidth(std::max(hint.width(), fontMetrics().horizontalAdvance(m_title) + titleHeight() + 16));
    if (m_collapsed)
        hint.setHeight(titleHeight());
    return hint;
}

QSize QLMCollapsibleFrame::minimumSizeHint() const
{
    QSize hint = QFrame::minimumSizeHint();
    if (m_collapsed)
        hint.setHeight(titleHeight());
    return hint;
}

void QLMCollapsibleFrame::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
    QPainter painter(this);
    const QRect bar(0, 0, width(), titleHeight());
    painter.fillRect(bar, palette().color(QPalette::Button));

    QStyleOption arrow;
    arrow.initFrom(this);
    const int side = titleHeight() - 8;
    arrow.rect = QRect(4, 4, side, side);
    style()->drawPrimitive(m_collapsed ? QStyle::PE_IndicatorArrowRight : QStyle::PE_IndicatorArrowDown, &arrow,
                           &painter, this);

    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(palette().color(QPalette::ButtonText));
    painter.drawText(bar.adjusted(side + 10, 0, -4, 0), Qt::AlignVCenter | Qt::AlignLeft, m_title);
}

void QLMCollapsibleFrame::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && event->pos().y() < titleHeight()) {
        toggle();
        event->accept();
        return;
    }
    QFrame::mousePressEvent(event);
}
