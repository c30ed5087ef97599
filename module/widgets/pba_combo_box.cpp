#include "module/widgets/pba_combo_box.h"

#include <QKeyEvent>
#include <QMenu>
#include <QScreen>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace {

constexpr int kAlwaysShown = 40;

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
    m_actions.append(m_menu->addAction(text));
    if (m_actions.size() == 1)
        SetCurrentIndex(0);
}

void PbaComboBox::Clear()
{
    m_menu->close();
    m_actions.clear();
    m_menu->clear();
}

void PbaComboBox::SetCurrentIndex(int index)
{
    m_currentIndex = index;
    if (const QAction *action = m_actions.value(index))
        setText(action->text());
}

void PbaComboBox::OnMenuTriggered(QAction *action)
{
    setStyleSheet(QString());
    setText(action->text());
    const auto index = static_cast<int>(m_actions.indexOf(action));
    m_currentIndex = index < 0 ? Count() : index;
    emit CurrentIndexChanged(m_currentIndex);
}

void PbaComboBox::AboutToShowMenu()
{
    setStyleSheet(QString());
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
    if (lacking > 0)
        option.text = option.fontMetrics.elidedText(text(), Qt::ElideRight,
                                                    option.fontMetrics.horizontalAdvance(text()) - lacking);
    setToolTip(lacking > 0 ? text() : QString());
    QStylePainter(this).drawControl(QStyle::CE_PushButton, option);
}
