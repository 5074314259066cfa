#pragma once

#include <QWidget>

namespace bench {

/// A signal lamp. Its state is also told in words beside it, never by its colour alone.
class Lamp : public QWidget
{
    Q_OBJECT

public:
    enum Light { Dark, Amber, Green };

    explicit Lamp(QWidget *parent = nullptr);

    void setLight(Light light);
    Light light() const { return m_light; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Light m_light = Dark;
};

} // namespace bench
