#include "screenview.h"

#include "elidedlabel.h"
#include "tone.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace bench {

namespace {

constexpr qreal cornerRadius = 10;
constexpr int signSize = 44;
constexpr int resultSignSize = 16;
constexpr qreal leastLight = 0.4;

const QColor bezelColor(0x1b, 0x1f, 0x23);
const QColor topColor(0x24, 0x35, 0x43);
const QColor bottomColor(0x13, 0x1c, 0x24);
const QColor cardColor(0x32, 0x45, 0x55);
const QColor brightText(0xf4, 0xf7, 0xf9);
const QColor softText(0xc3, 0xcf, 0xd8);

/// Black that covers its parent, more or less transparent.
class Shade : public QWidget
{
public:
    explicit Shade(QWidget *parent)
        : QWidget(parent)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

    void setOpacity(qreal opacity)
    {
        m_opacity = opacity;
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor::fromRgbF(0, 0, 0, m_opacity));
        painter.drawRoundedRect(QRectF(rect()), cornerRadius, cornerRadius);
    }

private:
    qreal m_opacity = 0;
};

class Card : public QFrame
{
protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(cardColor);
        painter.drawRoundedRect(QRectF(rect()), cornerRadius, cornerRadius);
    }
};

void setTextColor(QWidget *widget, const QColor &color)
{
    QPalette palette = widget->palette();
    palette.setColor(QPalette::WindowText, color);
    widget->setPalette(palette);
}

void scaleFont(QWidget *widget, qreal factor, bool bold)
{
    QFont font = widget->font();
    font.setPointSizeF(font.pointSizeF() * factor);
    font.setBold(bold);
    widget->setFont(font);
}

/// What the screen says before there is any pop-up, or when there will be none.
QString quietText(const UnitState &state)
{
    switch (state.stage) {
    case UnitState::Missing:
        return ScreenView::tr("There is no unit.");
    case UnitState::Off:
        return ScreenView::tr("Switched off. Plug a stick, then start the unit: it looks for "
                              "sticks while it starts.");
    case UnitState::Running:
        return ScreenView::tr("Starting");
    case UnitState::Waiting:
        return ScreenView::tr("A silent pass is over: its file shows the operator nothing.");
    case UnitState::Ended:
        return state.pass && !state.pass->configurationFile.isEmpty()
            ? ScreenView::tr("Production mode has ended without a word.")
            : ScreenView::tr("No stick with a configuration file: the unit runs normally.");
    }
    Q_UNREACHABLE();
}

} // namespace

ScreenView::ScreenView(QWidget *parent)
    : QFrame(parent)
    , m_sign(new QLabel)
    , m_headline(new QLabel)
    , m_text(new QLabel)
    , m_results(new QVBoxLayout)
    , m_shade(new Shade(this))
{
    setAccessibleName(tr("Head unit's screen"));
    setMinimumSize(400, 240);
    m_results->setSpacing(4);
    m_results->setContentsMargins(8, 0, 8, 0);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 24, 24, 20);
    layout->setSpacing(14);
    layout->addWidget(makeCard());
    layout->addLayout(m_results);
    layout->addStretch();
}

QFrame *ScreenView::makeCard()
{
    m_headline->setObjectName(QStringLiteral("popupHeadline"));
    m_headline->setWordWrap(true);
    m_text->setObjectName(QStringLiteral("popupText"));
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    setTextColor(m_headline, brightText);
    setTextColor(m_text, softText);
    scaleFont(m_headline, 1.35, true);
    scaleFont(m_text, 1.1, false);

    auto *texts = new QVBoxLayout;
    texts->setSpacing(4);
    texts->addStretch();
    texts->addWidget(m_headline);
    texts->addWidget(m_text);
    texts->addStretch();

    auto *card = new Card;
    card->setMinimumHeight(96);
    auto *layout = new QHBoxLayout(card);
    layout->setContentsMargins(18, 12, 18, 12);
    layout->setSpacing(16);
    layout->addWidget(m_sign, 0, Qt::AlignVCenter);
    layout->addLayout(texts, 1);
    return card;
}

void ScreenView::present(const UnitState &state)
{
    presentPopup(state);
    presentResults(state);
    m_dayLevel = state.dayLevel;
    m_nightLevel = state.nightLevel;
    dim();
}

void ScreenView::presentPopup(const UnitState &state)
{
    const bool quiet = state.popups.isEmpty();
    m_sign->setVisible(!quiet);
    if (quiet) {
        m_headline->setText(state.name);
        m_text->setText(quietText(state));
    } else {
        const Popup &last = state.popups.last();
        const PopupKind kind = popupKind(last.code);
        m_sign->setPixmap(toneSign(kind.tone, signSize, devicePixelRatioF()));
        m_headline->setText(capitalized(kind.name));
        m_text->setText(last.text);
    }
    m_text->setVisible(!m_text->text().isEmpty());
    setAccessibleDescription(m_headline->text() + QLatin1String(". ") + m_text->text());
}

void ScreenView::presentResults(const UnitState &state)
{
    while (QLayoutItem *row = m_results->takeAt(0)) {
        delete row->widget();
        delete row;
    }
    for (const Popup &popup : state.popups) {
        const PopupKind kind = popupKind(popup.code);
        if (kind.tone != PopupKind::Progress)
            addResult(kind, popup.text);
    }
}

void ScreenView::addResult(const PopupKind &kind, const QString &popupText)
{
    auto *sign = new QLabel;
    sign->setPixmap(toneSign(kind.tone, resultSignSize, devicePixelRatioF()));
    auto *text = new ElidedLabel;
    text->setText(popupText.isEmpty()
                      ? capitalized(kind.name)
                      : QStringLiteral("%1: %2").arg(capitalized(kind.name), popupText));
    setTextColor(text, kind.tone == PopupKind::Trouble ? brightText : softText);

    auto *row = new QWidget;
    row->setObjectName(QStringLiteral("result"));
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(sign);
    layout->addWidget(text, 1);
    m_results->addWidget(row);
}

qreal ScreenView::brightness(std::optional<int> level)
{
    return level ? leastLight + (1 - leastLight) * *level / 255 : 1;
}

void ScreenView::setNight(bool night)
{
    m_night = night;
    dim();
}

void ScreenView::dim()
{
    const qreal light = brightness(m_night ? m_nightLevel : m_dayLevel);
    static_cast<Shade *>(m_shade)->setOpacity(1 - light);
    m_shade->raise();
}

void ScreenView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(bezelColor);
    painter.drawRoundedRect(QRectF(rect()), cornerRadius, cornerRadius);

    const QRectF panel = QRectF(rect()).adjusted(8, 8, -8, -8);
    QLinearGradient light(panel.topLeft(), panel.bottomLeft());
    light.setColorAt(0, topColor);
    light.setColorAt(1, bottomColor);
    painter.setBrush(light);
    painter.drawRoundedRect(panel, cornerRadius / 2, cornerRadius / 2);
}

void ScreenView::resizeEvent(QResizeEvent *)
{
    m_shade->setGeometry(rect());
}

} // namespace bench
