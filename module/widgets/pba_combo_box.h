// SPDX-License-Identifier: Apache-2.0
// A push button whose pop-up menu plays the part of a drop-down list. The menu opens upwards, since the
// button stands at the bottom edge of the screen. Only a person's choice emits CurrentIndexChanged.
//
// A list too long for one menu is parted: each entry of the menu then opens the menu of one part. The parts
// are made when they are opened, so that a list costs what its texts take and no more.
#pragma once

#include <QPushButton>
#include <QStringList>

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
    int Count() const { return static_cast<int>(m_entries.size()); }
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
    void EmptyMenu();
    void PartMenu();
    void FillPart(QMenu &part, int first, int last);
    void AddEntry(QMenu &menu, int index);

    QMenu *m_menu;
    int m_currentIndex = -1;
    // As they stand on the button.
    QStringList m_entries;
};
