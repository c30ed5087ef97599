// SPDX-License-Identifier: Apache-2.0
#include "module/widgets/pba_message_box.h"

#include "module/forms/style.h"
#include "module/trace/version.h"
#include "module/forms/ui_pba_message_box.h"
#include "module/widgets/dialog_frame.h"

namespace {

void ShowButton(QPushButton *button, const QString &text)
{
    button->setText(text);
    button->show();
}

} // namespace

PbaMessageBox::PbaMessageBox(QWidget *parent)
    : QDialog(parent)
    , m_form(std::make_unique<Ui::PbaMessageBox>())
{
    m_form->setupUi(this);
    SetUpDialogFrame(this);
    for (QWidget *part : std::initializer_list<QWidget *>{m_form->button1, m_form->button2, m_form->button3,
                                                          m_form->icon, m_form->versionLabel})
        part->hide();
    m_form->title->setProperty("error_title", false);
    connect(m_form->button1, &QPushButton::clicked, this, &PbaMessageBox::Button1Clicked);
    connect(m_form->button2, &QPushButton::clicked, this, &PbaMessageBox::Button2Clicked);
    connect(m_form->button3, &QPushButton::clicked, this, &PbaMessageBox::Button3Clicked);
}

PbaMessageBox::~PbaMessageBox() = default;

void PbaMessageBox::SetTitle(const QString &text)
{
    m_form->title->setText(text);
}

void PbaMessageBox::SetText(const QString &text)
{
    m_form->mainText->setText(text);
}

void PbaMessageBox::SetSeverityIcon(int kind)
{
    if (kind == 0)
        ShowIcon(QString(), false);
    else if (kind == 1)
        ShowIcon(u":/pba2_res/icon_warning.png"_qs, false);
    else if (kind == 2)
        ShowIcon(u":/pba2_res/icon_error.png"_qs, true);
}

void PbaMessageBox::ShowIcon(const QString &file, bool error)
{
    if (!file.isEmpty())
        m_form->icon->setPixmap(QPixmap(file));
    m_form->icon->setHidden(file.isEmpty());
    m_form->title->setProperty("error_title", error);
    Restyle(m_form->title);
}

void PbaMessageBox::SetButton1Text(const QString &text)
{
    ShowButton(m_form->button1, text);
}

void PbaMessageBox::SetButton2Text(const QString &text)
{
    ShowButton(m_form->button2, text);
}

void PbaMessageBox::SetButton3Text(const QString &text)
{
    ShowButton(m_form->button3, text);
    m_form->button3->setFocus();
}

void PbaMessageBox::ShowVersion()
{
    m_form->versionLabel->setText(QString::fromUtf16(pba::kModuleVersion));
    m_form->versionLabel->show();
}

void PbaMessageBox::Button1Clicked()
{
    CloseWith(1);
}

void PbaMessageBox::Button2Clicked()
{
    CloseWith(2);
}

void PbaMessageBox::Button3Clicked()
{
    CloseWith(3);
}

void PbaMessageBox::CloseWith(std::int32_t result)
{
    m_result = result;
    accept();
}
