// SPDX-License-Identifier: Apache-2.0
// The least that a toolkit program with a login could be: one line edit and one button. The view is measured
// against it, for everything that it costs beyond this is our own doing. With any argument the dialog takes the
// whole screen, as the view does.
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QDialog dialog;
    auto *layout = new QVBoxLayout(&dialog);
    auto *button = new QPushButton(u"Login"_qs);
    button->setObjectName(u"loginButton"_qs);
    layout->addWidget(new QLineEdit);
    layout->addWidget(button);
    argc > 1 ? dialog.showFullScreen() : dialog.show();
    return QApplication::exec();
}
