// A push button whose pop-up menu plays the part of a drop-down list. The menu opens upwards, since the
// button stands at the bottom edge of the screen. Only a person's choice emits CurrentIndexChanged.
#pragma once

#include <QList>
#include <QPushButton>

class QAction;
class QMenu;

class PbaComboBox : public QPushButton
{
    Q_OBJECT

public:
    explicit PbaComboBox(QWidget *parent = nullptr);

    void AddItem(const QString &text);
    // Closes the list. The current index stays.
    void Clear();
    int Count() const { return static_cast<int>(m_actions.size()); }
    int CurrentIndex() const { return m_currentIndex; }
    void SetCurrentIndex(int index);

    bool eventFilter(QObject *watched, QEvent *event) override;
    QSize minimumSizeHint() const override;

signals:
    void CurrentIndexChanged(int index);

public slots:
    void AboutToShowMenu();
    void AboutToHideMenu();
    void OnMenuTriggered(QAction *action);

protected:
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void Underline();
    void PlaceMenu();

    QMenu *m_menu;
    int m_currentIndex = -1;
    QList<QAction *> m_actions;
};
