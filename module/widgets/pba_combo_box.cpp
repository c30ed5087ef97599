// SPDX-License-Identifier: Apache-2.0
#include "module/widgets/pba_combo_box.h"

#include <QKeyEvent>
#include <QMenu>
#include <QScreen>
#include <QStyleOptionButton>
#include <QStylePainter>

#include "module/widgets/shown_name.h"

namespace {

constexpr int kAlwaysShown = 40;
constexpr int kPartLength = 500;

} // namespace

PbaComboBox::PbaComboBox(QWidget *parent)
    : QPushButton(parent)
    , m_menu(new QMenu(this))
{
    setMenu(m_menu);
    m_menu->installEventFilter(this);
    connect(m_menu, &QMenu::aboutToShow, this, &PbaComboBox::AboutToShowMenu);
    connect(m_menu, &QMenu::aboutToHide, this, &PbaComboBox::AboutToHideMenu);
    connect(m_menu, &QMenu::triggered, this, &PbaComboBox::OnMenuTriggered);
}

void PbaComboBox::AddItem(const QString &text)
{
    m_entries.append(ButtonText(text));
    if (Count() == 1)
        SetCurrentIndex(0);
    if (Count() <= kPartLength)
        AddEntry(*m_menu, Count() - 1);
    else if (!m_menu->isEmpty())
        EmptyMenu();
}

void PbaComboBox::Clear()
{
    m_menu->close();
    m_entries.clear();
    EmptyMenu();
}

void PbaComboBox::EmptyMenu()
{
    m_menu->clear();
    const auto parts = m_menu->findChildren<QMenu *>(QString(), Qt::FindDirectChildrenOnly);
    for (QMenu *part : parts)
        part->deleteLater();
}

void PbaComboBox::PartMenu()
{
    for (int first = 0; first < Count(); first += kPartLength) {
        const int last = qMin(first + kPartLength, Count()) - 1;
        QMenu *part = m_menu->addMenu(m_entries[first] + u" \u2013 "_qs + m_entries[last]);
        connect(part, &QMenu::aboutToShow, this, [=, this] { FillPart(*part, first, last); });
    }
}

void PbaComboBox::FillPart(QMenu &part, int first, int last)
{
    if (!part.isEmpty())
        return;
    for (int index = first; index <= last; ++index)
        AddEntry(part, index);
}

void PbaComboBox::AddEntry(QMenu &menu, int index)
{
    menu.addAction(m_entries[index])->setData(index);
}

void PbaComboBox::SetCurrentIndex(int index)
{
    m_currentIndex = index;
    if (index >= 0 && index < Count())
        setText(m_entries[index]);
}

void PbaComboBox::OnMenuTriggered(QAction *action)
{
    setStyleSheet(QString());
    setText(action->text());
    bool isEntry = false;
    const int index = action->data().toInt(&isEntry);
    m_currentIndex = isEntry ? index : Count();
    emit CurrentIndexChanged(m_currentIndex);
}

void PbaComboBox::AboutToShowMenu()
{
    setStyleSheet(QString());
    if (m_menu->isEmpty())
        PartMenu();
}

void PbaComboBox::AboutToHideMenu()
{
    Underline();
}

void PbaComboBox::enterEvent(QEnterEvent *event)
{
    Underline();
    QPushButton::enterEvent(event);
}

void PbaComboBox::leaveEvent(QEvent *event)
{
    setStyleSheet(QString());
    QPushButton::leaveEvent(event);
}

// Return would press the page's default button instead, for a selector is never the dialog's default.
void PbaComboBox::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::InsertParagraphSeparator))
        showMenu();
    else
        QPushButton::keyPressEvent(event);
}

bool PbaComboBox::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_menu || event->type() != QEvent::Show)
        return QPushButton::eventFilter(watched, event);
    PlaceMenu();
    return true;
}

// Centred above the button; in screen coordinates, since the window need not fill the screen. A list that is
// too long or too wide for that stays on the screen.
void PbaComboBox::PlaceMenu()
{
    const QPoint corner = mapToGlobal(QPoint(0, 0));
    const QSize menu = m_menu->frameGeometry().size();
    const QRect all = screen()->geometry();
    const int x = corner.x() + frameGeometry().width() / 2 - menu.width() / 2;
    const int y = corner.y() - menu.height();
    m_menu->move(qMax(all.left(), qMin(x, all.right() + 1 - menu.width())), qMax(all.top(), y));
}

void PbaComboBox::Underline()
{
    setStyleSheet(tr("PbaComboBox { text-decoration: underline;}"));
}

// A long name may be cut, or it would push its neighbours off the screen.
QSize PbaComboBox::minimumSizeHint() const
{
    const QSize whole = sizeHint();
    return {qMin(whole.width(), kAlwaysShown), whole.height()};
}

void PbaComboBox::paintEvent(QPaintEvent *)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    // The room that the text has: what the button lacks is missing there.
    const int lacking = sizeHint().width() - width();
    const QString name = NameOnButton(text());
    if (lacking > 0)
        option.text = ButtonText(option.fontMetrics.elidedText(
            name, Qt::ElideRight, option.fontMetrics.horizontalAdvance(name) - lacking));
    setToolTip(lacking > 0 ? ToolTipText(name) : QString());
    QStylePainter(this).drawControl(QStyle::CE_PushButton, option);
}
