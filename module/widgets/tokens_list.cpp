// SPDX-License-Identifier: Apache-2.0
#include "module/widgets/tokens_list.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QSignalMapper>

#include "module/widgets/late_focus.h"
#include "module/widgets/pba_elided_label.h"
#include "module/widgets/pba_link_button.h"
#include "module/widgets/secret_field.h"

namespace {

// A token's rows in the grid: name, PIN and button; the link; a gap.
constexpr int kRowsPerToken = 3;

enum Column { kNameColumn, kPinColumn, kButtonColumn };

// Three lines, for names that differ in the serial number at their end only.
constexpr QSize kNameSize(150, 42);
// The toolkit's own least width has the font's widest character in mind.
constexpr QSize kFieldSize(80, 28);
constexpr QSize kButtonSize(112, 38);

// The same words as on the form's pages.
QString FormText(const char *text, const char *comment = nullptr)
{
    return QCoreApplication::translate("PbaMainWindow", text, comment);
}

// Return acts here only. The dialog would press the default button with it, by then that of another page.
class PinEdit : public QLineEdit
{
protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        QLineEdit::keyPressEvent(event);
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            event->accept();
    }
};

} // namespace

TokensList::TokensList(QWidget *parent)
    : QWidget(parent)
    , m_mapper(new QSignalMapper(this))
{
    connect(m_mapper, &QSignalMapper::mappedInt, this, &TokensList::OnPinEntered);
}

QGridLayout *TokensList::Grid() const
{
    return static_cast<QGridLayout *>(layout());
}

QLineEdit *TokensList::PinField(int index) const
{
    const QLayoutItem *item = Grid()->itemAtPosition(kRowsPerToken * index, kPinColumn);
    return item ? qobject_cast<QLineEdit *>(item->widget()) : nullptr;
}

// Return in one of the fields may have led here: what is cleared is destroyed when its event is over.
void TokensList::Clear()
{
    while (QLayoutItem *item = layout()->takeAt(0)) {
        QWidget *widget = item->widget();
        delete item;
        m_mapper->removeMappings(widget);
        widget->disconnect(this);
        widget->hide();
        if (auto *pin = qobject_cast<QLineEdit *>(widget))
            EmptySecretField(pin);
        widget->deleteLater();
    }
    m_tokenCount = 0;
    Grid()->setVerticalSpacing(0);
}

void TokensList::AddToken(const QString &name, bool giveFocus)
{
    const int row = kRowsPerToken * m_tokenCount;
    QLineEdit *pin = AddPinField(row);
    AddName(row, name, pin);
    AddContinueButton(row);
    AddRecoveryLink(row + 1);
    auto *gap = new QLabel(u" "_qs);
    gap->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    Grid()->addWidget(gap, row + 2, kPinColumn);
    if (giveFocus)
        GiveFocus(pin);
    ++m_tokenCount;
}

void TokensList::AddName(int row, const QString &name, QLineEdit *pin)
{
    auto *label = new PbaElidedLabel(name);
    label->setTextFormat(Qt::PlainText);
    label->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    label->setMaximumWidth(kNameSize.width());
    label->setMinimumHeight(kNameSize.height());
    pin->setAccessibleName(name);
    Grid()->addWidget(label, row, kNameColumn);
}

QLineEdit *TokensList::AddPinField(int row)
{
    auto *pin = new PinEdit;
    WatchSecretField(pin);
    pin->setEchoMode(QLineEdit::Password);
    pin->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    pin->setMinimumSize(kFieldSize);
    connect(pin, &QLineEdit::returnPressed, m_mapper, qOverload<>(&QSignalMapper::map));
    m_mapper->setMapping(pin, m_tokenCount);
    Grid()->addWidget(pin, row, kPinColumn);
    // Else only later, behind the first key.
    pin->show();
    return pin;
}

void TokensList::AddContinueButton(int row)
{
    auto *button = new QPushButton(FormText("CONTINUE", "Login"));
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    button->setMinimumSize(kButtonSize);
    connect(button, &QPushButton::clicked, m_mapper, qOverload<>(&QSignalMapper::map));
    m_mapper->setMapping(button, m_tokenCount);
    Grid()->addWidget(button, row, kButtonColumn);
}

void TokensList::AddRecoveryLink(int row)
{
    auto *link = new PbaLinkButton(FormText("Forgot your password?"));
    link->setFlat(true);
    link->setAutoDefault(false);
    link->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    connect(link, &QPushButton::clicked, this, &TokensList::OnForgotYourPinCode);
    // Beyond the column too, or a long text would leave less room to the names.
    Grid()->addWidget(link, row, kPinColumn, 1, 2, Qt::AlignLeft | Qt::AlignTop);
}

void TokensList::FocusFirstToken()
{
    if (m_tokenCount > 0)
        GiveFocus(PinField(0));
}

void TokensList::OnPinEntered(int index)
{
    const QPointer<QLineEdit> pin = PinField(index);
    if (!pin)
        return;
    emit PinEntered(index, pin->text());
    // A wrong PIN that stayed would be part of the next one, and tokens count the tries. The list may have
    // been built anew meanwhile.
    if (pin)
        EmptySecretField(pin);
}

void TokensList::OnForgotYourPinCode()
{
    emit ForgotYourPinCodeButtonPressed();
}
