#pragma once

#include <QWidget>

namespace bench {

/// One line of text that gives way when there is little room: what is cut shows as a tool tip.
class ElidedLabel : public QWidget
{
    Q_OBJECT

public:
    explicit ElidedLabel(Qt::TextElideMode mode = Qt::ElideRight, QWidget *parent = nullptr);

    void setText(const QString &text);
    QString text() const { return m_text; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Qt::TextElideMode m_mode;
    QString m_text;
};

} // namespace bench
