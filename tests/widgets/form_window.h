// The main window's form on a plain dialog, without the controller that brings it to life.
#pragma once

#include <QDialog>
#include <QTest>

#include "module/forms/style.h"
#include "module/forms/ui_pba_main_window.h"

struct FormWindow
{
    explicit FormWindow(QSize size = {800, 600})
    {
        form.setupUi(&dialog);
        ApplyPbaStyle(&dialog);
        dialog.resize(size);
        // The controller hides these for good.
        for (QWidget *tuning :
             std::initializer_list<QWidget *>{form.pixelsPerMillimeter, form.accelerationFactor,
                                              form.accelerationThreshold, form.fpsButton})
            tuning->hide();
        dialog.show();
        if (!QTest::qWaitForWindowExposed(&dialog))
            qFatal("the form's window does not come up");
    }

    // A widget's place in the window.
    QRect PlaceOf(const QWidget *widget) const
    {
        return {widget->mapTo(&dialog, QPoint(0, 0)), widget->size()};
    }

    QDialog dialog;
    Ui::PbaMainWindow form;
};
