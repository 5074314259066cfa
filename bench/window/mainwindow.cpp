#include "mainwindow.h"

#include "../verdict.h"
#include "backlightpanel.h"
#include "board.h"
#include "popuphistory.h"
#include "screenview.h"
#include "stickpanel.h"
#include "storedview.h"
#include "testpanel.h"
#include "tone.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

namespace bench {

namespace {

constexpr int signSize = 28;

QString stageText(const UnitState &state)
{
    switch (state.stage) {
    case UnitState::Missing:
        return MainWindow::tr("Not there");
    case UnitState::Off:
        return MainWindow::tr("Switched off");
    case UnitState::Running:
        return MainWindow::tr("In production: leave the stick where it is");
    case UnitState::Waiting:
        return MainWindow::tr("Production done: unplug the stick, or go on to the next unit");
    case UnitState::Ended:
        return MainWindow::tr("Production mode has ended");
    }
    Q_UNREACHABLE();
}

QStringList droppedFolders(const QMimeData *data)
{
    QStringList folders;
    const QList<QUrl> urls = data->urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile() && QFileInfo(url.toLocalFile()).isDir())
            folders.append(url.toLocalFile());
    }
    return folders;
}

QGroupBox *framed(const QString &title, QWidget *content)
{
    auto *frame = new QGroupBox(title);
    auto *layout = new QVBoxLayout(frame);
    layout->addWidget(content);
    return frame;
}

} // namespace

MainWindow::MainWindow(Board &board, QWidget *parent)
    : QWidget(parent)
    , m_board(board)
    , m_name(new QLabel)
    , m_sign(new QLabel)
    , m_stage(new QLabel)
    , m_proceed(new QPushButton)
    , m_screen(new ScreenView)
    , m_backlight(new BacklightPanel)
    , m_tests(new TestPanel)
    , m_sticks(new StickPanel)
    , m_stored(new StoredView)
    , m_history(new PopupHistory)
    , m_error(new QLabel)
{
    setWindowTitle(tr("Production bench"));
    setAcceptDrops(true);
    arrange();
    connectBoard();
    present();
    m_proceed->setFocus();
}

void MainWindow::connectBoard()
{
    connect(&m_board, &Board::changed, this, &MainWindow::present);
    connect(&m_board, &Board::failed, this, &MainWindow::showError);
    connect(m_proceed, &QPushButton::clicked, &m_board, &Board::proceed);
    connect(m_sticks, &StickPanel::plugWanted, &m_board, &Board::plug);
    connect(m_sticks, &StickPanel::unplugWanted, &m_board, &Board::unplug);
    connect(m_tests, &TestPanel::dataSeen, &m_board, &Board::reportData);
    connect(m_backlight, &BacklightPanel::nightChosen, m_screen, &ScreenView::setNight);
    // Qt's own style leaves no room beside a text that is longer than the least width of a button.
    setStyleSheet(QStringLiteral("QPushButton { padding: 0.25em 1em }"));
    const QList<QPushButton *> buttons = findChildren<QPushButton *>();
    for (QPushButton *button : buttons)
        connect(button, &QPushButton::clicked, m_error, &QLabel::hide);
}

void MainWindow::arrange()
{
    m_error->setWordWrap(true);
    m_error->setObjectName(QStringLiteral("error"));
    m_error->hide();

    auto *below = new QHBoxLayout;
    below->addWidget(m_backlight, 3);
    below->addWidget(m_tests, 2);
    auto *left = new QVBoxLayout;
    left->addWidget(m_screen, 3);
    left->addLayout(below, 2);
    auto *right = new QVBoxLayout;
    right->addWidget(m_sticks);
    right->addWidget(framed(tr("Stored on the unit"), m_stored), 3);
    right->addWidget(framed(tr("Pop-ups"), m_history), 2);

    auto *columns = new QHBoxLayout;
    columns->setSpacing(12);
    columns->addLayout(left, 1);
    columns->addLayout(right, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->setSpacing(12);
    layout->addWidget(makeHeader());
    layout->addWidget(m_error);
    layout->addLayout(columns, 1);
    resize(1060, 620);
}

QWidget *MainWindow::makeHeader()
{
    QFont large = m_name->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setBold(true);
    m_name->setFont(large);
    m_stage->setObjectName(QStringLiteral("stage"));
    m_stage->setWordWrap(true);
    m_stage->setMinimumHeight(2 * m_stage->fontMetrics().lineSpacing() + 2);
    m_proceed->setObjectName(QStringLiteral("proceed"));
    m_proceed->setDefault(true);

    auto *header = new QWidget;
    auto *layout = new QHBoxLayout(header);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(14);
    layout->addWidget(m_name);
    layout->addWidget(m_sign);
    layout->addWidget(m_stage, 1);
    layout->addWidget(m_proceed);
    return header;
}

void MainWindow::present()
{
    const UnitState &state = m_board.state();
    presentStage();
    m_proceed->setText(state.stage == UnitState::Off ? tr("&Start unit") : tr("&Next unit"));
    m_proceed->setEnabled(m_board.canProceed());
    m_screen->present(state);
    m_backlight->present(state);
    m_tests->present(state);
    m_sticks->present(state);
    m_stored->present(state);
    m_history->present(state);
    if (m_closing && !m_board.isBusy())
        close();
}

/// Where the unit stands and, once that is known, whether it is in order.
void MainWindow::presentStage()
{
    const UnitState &state = m_board.state();
    m_name->setText(state.name);
    QString text = stageText(state).toHtmlEscaped();
    const bool judged = state.stage == UnitState::Waiting || state.stage == UnitState::Ended;
    m_sign->setVisible(judged);
    if (judged) {
        const QString trouble = Verdict{state.name, state.pass, state.popups}.trouble();
        const auto tone = trouble.isEmpty() ? PopupKind::Success : PopupKind::Trouble;
        m_sign->setPixmap(toneSign(tone, signSize, devicePixelRatioF()));
        text = QStringLiteral("<b style=\"color:%1\">%2</b><br>%3")
                   .arg(toneColor(tone).name(),
                        trouble.isEmpty() ? tr("In order") : capitalized(trouble).toHtmlEscaped(),
                        text);
    }
    m_stage->setText(text);
}

void MainWindow::showError(const QString &sentence)
{
    m_error->setText(QStringLiteral("<b style=\"color:%1\">%2</b>")
                         .arg(toneColor(PopupKind::Trouble).name(), sentence.toHtmlEscaped()));
    m_error->show();
}

/// The module ends first, which may take it as long as its pass.
void MainWindow::closeEvent(QCloseEvent *event)
{
    if (!m_board.isBusy())
        return;
    event->ignore();
    if (!m_closing)
        m_board.quit();
    m_closing = true;
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (!droppedFolders(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    m_error->hide();
    const QStringList folders = droppedFolders(event->mimeData());
    for (const QString &folder : folders)
        m_board.plug(folder);
    event->acceptProposedAction();
}

} // namespace bench
