// SPDX-License-Identifier: Apache-2.0
#include "module/widgets/response_input.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include "pba/password_recovery.h"
#include "module/widgets/late_focus.h"
#include "module/widgets/secret_field.h"

namespace {

constexpr char16_t kMask[] = u">NNNN.NNNN.NNNN.NNNN.N;_";
constexpr int kFullLength = 21;
constexpr int kLineWidth = 200;

enum Column { kLabelColumn, kLineColumn, kStatusColumn };

void Wipe(ResponseInput::Lines &lines)
{
    for (kro::string_t &line : lines)
        line.Wipe();
    lines.Clear();
}

// Copies of the lines for one call to the logic, in which the input may begin anew.
struct LinesForCall
{
    explicit LinesForCall(const ResponseInput::Lines &accepted)
        : lines(accepted)
    {
    }
    ~LinesForCall() { Wipe(lines); }

    ResponseInput::Lines lines;
};

kro::string_t WithoutDots(const QString &text)
{
    kro::string_t line;
    line.Reserve(static_cast<std::size_t>(text.size()));
    for (const QChar character : text) {
        if (character == u'.')
            continue;
        line.Resize(line.Length() + 1);
        line.Buffer()[line.Length() - 1] = character.toLatin1();
    }
    return line;
}

// A line that reads from left to right in every language: its groups would change places. A click into it
// leads to the first empty place: behind it the mask would refuse what is typed.
class ResponseLine : public QLineEdit
{
public:
    ResponseLine()
    {
        setInputMask(QString::fromUtf16(kMask));
        setProperty("response", true);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        setMinimumWidth(kLineWidth);
    }

protected:
    void changeEvent(QEvent *event) override
    {
        QLineEdit::changeEvent(event);
        if (event->type() == QEvent::LayoutDirectionChange)
            ReadFromLeftToRight();
    }
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() != Qt::Key_Direction_R)
            QLineEdit::keyPressEvent(event);
    }
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        QLineEdit::mouseReleaseEvent(event);
        const auto blank = static_cast<int>(displayText().indexOf(u'_'));
        if (blank >= 0 && blank < cursorPosition() && !hasSelectedText())
            setCursorPosition(blank);
    }

private:
    void ReadFromLeftToRight()
    {
        QKeyEvent direction(QEvent::KeyPress, Qt::Key_Direction_L, Qt::NoModifier);
        QLineEdit::keyPressEvent(&direction);
    }
};

void ShowStatus(QLabel *status, const QString &text, const QString &colour)
{
    status->setText(text);
    status->setStyleSheet(u"*{color: %1;}"_qs.arg(colour));
}

} // namespace

QValidator::State ResponseValidator::validate(QString &input, int &) const
{
    State state = Acceptable;
    for (const QChar character : std::as_const(input)) {
        const bool letter = character >= u'A' && character <= u'Z';
        const bool digit = character >= u'0' && character <= u'9';
        if (character == u'_')
            state = Intermediate;
        else if (!letter && !digit && character != u'.')
            return Invalid;
    }
    return state;
}

ResponseInput::ResponseInput(QWidget *parent)
    : QWidget(parent)
    , m_validator(new ResponseValidator(this))
{
}

ResponseInput::~ResponseInput()
{
    Wipe(m_acceptedLines);
    m_rejectedLine.Wipe();
}

QString ResponseInput::LineLabel(int number)
{
    return tr("String %0:").arg(number);
}

QGridLayout *ResponseInput::Grid() const
{
    return static_cast<QGridLayout *>(layout());
}

void ResponseInput::StartInput(pba::IPasswordRecoveryLogic *checker)
{
    ++m_starts;
    m_checker = checker;
    Wipe(m_acceptedLines);
    Clear();
    AddLine(0);
}

// What is cleared may be in the middle of telling that it was edited: it is destroyed later.
void ResponseInput::Clear()
{
    m_currentLine = nullptr;
    m_currentStatus = nullptr;
    m_rejectedLine.Wipe();
    while (QLayoutItem *item = layout()->takeAt(0)) {
        QWidget *widget = item->widget();
        delete item;
        widget->disconnect(this);
        widget->hide();
        if (auto *line = qobject_cast<QLineEdit *>(widget))
            EmptySecretField(line);
        widget->deleteLater();
    }
}

void ResponseInput::AddLine(int row)
{
    QLineEdit *finished = m_currentLine;
    if (finished)
        finished->disconnect(this);
    m_currentLine = new ResponseLine;
    m_currentLine->setValidator(m_validator);
    m_currentLine->setAccessibleName(LineLabel(row + 1));
    connect(m_currentLine, &QLineEdit::textEdited, this, &ResponseInput::OnResponseLineChanged);
    m_currentStatus = new QLabel;
    m_currentStatus->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);

    Grid()->addWidget(new QLabel(LineLabel(row + 1)), row, kLabelColumn);
    Grid()->addWidget(m_currentLine, row, kLineColumn);
    Grid()->addWidget(m_currentStatus, row, kStatusColumn);
    // Before the finished line loses the focus, which would pass through the links below.
    m_currentLine->show();
    GiveFocus(m_currentLine);
    if (finished)
        finished->setEnabled(false);
}

void ResponseInput::FinishLine()
{
    m_currentLine->disconnect(this);
    m_currentLine->setEnabled(false);
}

void ResponseInput::OnResponseLineChanged(const QString &text)
{
    if (text.size() < kFullLength) {
        if (m_rejectedLine.IsEmpty())
            return;
        m_rejectedLine.Wipe();
        m_currentStatus->clear();
        emit LineEdited();
        return;
    }
    kro::string_t line = WithoutDots(text);
    // A key that the mask refuses is an edit too, by the toolkit's account.
    if (line != m_rejectedLine)
        CheckLine(line);
    line.Wipe();
}

void ResponseInput::CheckLine(kro::string_t &line)
{
    if (!m_checker)
        return;
    const int start = m_starts;
    const bool rejected = m_checker->CheckResponseLine(line) == kro::kFalse;
    if (start != m_starts)
        return;
    m_rejectedLine.Wipe();
    if (rejected) {
        m_rejectedLine = line;
        ShowStatus(m_currentStatus, QCoreApplication::translate("PbaMainWindow", "Rejected"), u"red"_qs);
        emit LineRejected();
        return;
    }
    m_acceptedLines.PushBack(line);
    CheckResponse();
}

void ResponseInput::CheckResponse()
{
    bool complete = false;
    bool valid = false;
    const int start = m_starts;
    if (m_checker) {
        const LinesForCall copy(m_acceptedLines);
        m_checker->CheckResponse(copy.lines, &complete, &valid);
    }
    if (start != m_starts)
        return;
    if (!valid) {
        RejectAllLines();
        FinishLine();
        emit ResponseRejected();
        return;
    }
    ShowStatus(m_currentStatus, QCoreApplication::translate("PbaMainWindow", "Accepted"), u"green"_qs);
    if (complete) {
        FinishLine();
        emit ResponseAccepted();
        return;
    }
    AddLine(static_cast<int>(m_acceptedLines.Size()));
    emit LineAccepted();
}

void ResponseInput::RejectAllLines()
{
    for (int row = 0; row < Grid()->rowCount(); ++row) {
        const QLayoutItem *item = Grid()->itemAtPosition(row, kStatusColumn);
        if (item)
            ShowStatus(static_cast<QLabel *>(item->widget()),
                       QCoreApplication::translate("PbaMainWindow", "Rejected"), u"red"_qs);
    }
}
