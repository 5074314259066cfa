#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace bench {

class BacklightPanel;
class Board;
class PopupHistory;
class ScreenView;
class StickPanel;
class StoredView;
class TestPanel;

/// The bench's window: shows the board's state and hands on what the user does.
class MainWindow : public QWidget
{
    Q_OBJECT

public:
    /// @p board must outlive the window.
    explicit MainWindow(Board &board, QWidget *parent = nullptr);

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private slots:
    void present();
    void showError(const QString &sentence);

private:
    void presentStage();
    void connectBoard();
    void arrange();
    QWidget *makeHeader();

    Board &m_board;
    bool m_closing = false; ///< waits for the module to end

    QLabel *m_name;
    QLabel *m_sign;
    QLabel *m_stage;
    QPushButton *m_proceed;
    ScreenView *m_screen;
    BacklightPanel *m_backlight;
    TestPanel *m_tests;
    StickPanel *m_sticks;
    StoredView *m_stored;
    PopupHistory *m_history;
    QLabel *m_error;
};

} // namespace bench
