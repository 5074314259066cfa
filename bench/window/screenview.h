#pragma once

#include "../popups.h"
#include "unitstate.h"

#include <QFrame>

class QLabel;
class QVBoxLayout;

namespace bench {

class ElidedLabel;

/**
 * The head unit's screen: the pop-up that the operator was shown last, below it the results of this
 * unit, which stay until the next one. It gets darker and brighter with the backlight level.
 */
class ScreenView : public QFrame
{
    Q_OBJECT

public:
    explicit ScreenView(QWidget *parent = nullptr);

    void present(const UnitState &state);

    /// What the level 0 to 255 leaves of the light: 1 is all of it. There always is enough to read.
    static qreal brightness(std::optional<int> level);

public slots:
    void setNight(bool night);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QFrame *makeCard();
    void presentPopup(const UnitState &state);
    void presentResults(const UnitState &state);
    void addResult(const PopupKind &kind, const QString &popupText);
    void dim();

    QLabel *m_sign;
    QLabel *m_headline;
    QLabel *m_text;
    QVBoxLayout *m_results;
    QWidget *m_shade; ///< lies over everything and takes light away
    std::optional<int> m_dayLevel;
    std::optional<int> m_nightLevel;
    bool m_night = false;
};

} // namespace bench
