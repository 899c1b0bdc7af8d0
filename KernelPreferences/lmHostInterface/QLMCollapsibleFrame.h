#pragma once

#include "lmHostApi.h"

#include <QFrame>
#include <QList>
#include <QPointer>

// Host frame with a clickable title bar; collapsing hides its body.
// Child widgets and layouts are placed in the body below the title.
class LM_HOST_API QLMCollapsibleFrame : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle)
    Q_PROPERTY(bool collapsed READ isCollapsed WRITE setCollapsed NOTIFY collapsedChanged)

public:
    explicit QLMCollapsibleFrame(QWidget *parent = nullptr);
    ~QLMCollapsibleFrame() override;

    QString title() const { return m_title; }
    void setTitle(const QString &title);

    bool isCollapsed() const { return m_collapsed; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    void setCollapsed(bool collapsed);
    void toggle() { setCollapsed(!m_collapsed); }

Q_SIGNALS:
    void collapsedChanged(bool collapsed);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int titleHeight() const;
    void hideForCollapse(QWidget *child);

    QString m_title;
    bool m_collapsed = false;
    bool m_hidingForCollapse = false;
    QList<QPointer<QWidget>> m_hiddenByCollapse;
    QList<QPointer<QWidget>> m_watched;
};
