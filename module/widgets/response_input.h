// SPDX-License-Identifier: Apache-2.0
// The lines into which a person types the administrator's response. A line that is full goes to the
// recovery's logic, which alone decides; one that passes is followed by the next, until the logic has seen
// enough.
#pragma once

#include <QValidator>
#include <QWidget>

#include "kro/string.h"
#include "kro/vector.h"

class QGridLayout;
class QLabel;
class QLineEdit;

namespace pba {
class IPasswordRecoveryLogic;
}

// Judges a line as its mask shows it: letters, digits and dots, "_" where nothing stands yet.
class ResponseValidator : public QValidator
{
    Q_OBJECT

public:
    using QValidator::QValidator;

    State validate(QString &input, int &position) const override;
};

class ResponseInput : public QWidget
{
    Q_OBJECT

public:
    using Lines = kro::vector_t<kro::string_t>;

    explicit ResponseInput(QWidget *parent = nullptr);
    ~ResponseInput() override;

    // Begins with one empty line. `checker` is not owned.
    void StartInput(pba::IPasswordRecoveryLogic *checker);
    // Another logic has taken the place of the one that was given at the start.
    void SetChecker(pba::IPasswordRecoveryLogic *checker) { m_checker = checker; }
    // Those that passed, 17 characters each, without dots.
    const Lines &AcceptedLines() const { return m_acceptedLines; }

    // What stands before a line, of a response or a challenge: "String 1:".
    static QString LineLabel(int number);

signals:
    void LineEdited();
    void LineRejected();
    void LineAccepted();
    void ResponseRejected();
    void ResponseAccepted();

public slots:
    void OnResponseLineChanged(const QString &text);

private:
    QGridLayout *Grid() const;
    void Clear();
    void AddLine(int row);
    void FinishLine();
    void CheckLine(kro::string_t &line);
    void CheckResponse();
    void RejectAllLines();

    pba::IPasswordRecoveryLogic *m_checker = nullptr;
    Lines m_acceptedLines;
    QLineEdit *m_currentLine = nullptr;
    QLabel *m_currentStatus = nullptr;
    // What the logic refused, as long as it stands in the line.
    kro::string_t m_rejectedLine;
    ResponseValidator *m_validator;
    // Tells a check that the input began anew while the logic was asked.
    int m_starts = 0;
};
