// SPDX-License-Identifier: Apache-2.0
// The three steps of the password reset: entropy is gathered, the challenge shown, the response typed.
#include "module/views/qt_view_impl.h"

#include <new>

#include "module/forms/ui_pba_main_window.h"
#include "module/views/challenge_text.h"
#include "module/views/host_string.h"
#include "module/views/screen_traits.h"

namespace pba {

namespace {

kro::result_t MakeEntropyBuffer(std::uint32_t size, std::shared_ptr<EntropyBuffer> &buffer)
{
    try {
        buffer = std::make_shared<EntropyBuffer>(size);
        return kro::kOk;
    } catch (const std::bad_alloc &) {
        return kro::kOutOfMemory;
    }
}

} // namespace

void QtViewImpl::ConnectRecoveryPages()
{
    connect(Form().continueToResponceButton, &QPushButton::clicked, this, &QtViewImpl::OnGotoResponse);
    connect(Form().responseInput, &ResponseInput::LineRejected, this, &QtViewImpl::OnResponceLineRejected);
    connect(Form().responseInput, &ResponseInput::LineAccepted, this, &QtViewImpl::OnResponceLineAccepted);
    connect(Form().responseInput, &ResponseInput::LineEdited, this, &QtViewImpl::OnResponseLineEdited);
    connect(Form().responseInput, &ResponseInput::ResponseRejected, this, &QtViewImpl::OnResponceRejected);
    connect(Form().responseInput, &ResponseInput::ResponseAccepted, this, &QtViewImpl::OnResponceAccepted);
    connect(Form().quitRecoveryButton, &QPushButton::clicked, this, &QtViewImpl::OnQuitPasswordRecovery);
    connect(Form().restartRecoveryButton, &QPushButton::clicked, this,
            &QtViewImpl::OnRestartPasswordRecovery);
}

kro::result_t QtViewImpl::StartEntropyCollection(std::uint32_t amount)
{
    return Defer("pba::QtViewImpl::StartEntropyCollection",
                 [=, this] { StartEntropyCollectionInternal(amount); });
}

void QtViewImpl::StartEntropyCollectionInternal(std::uint32_t amount)
{
    static constexpr char kMember[] = "pba::QtViewImpl::StartEntropyCollectionInternal";
    TraceScope trace(kMember);
    SetCollectingEntropy(false);
    if (m_entropy)
        m_entropy->Wipe();
    const CallResult result = MakeEntropyBuffer(amount, m_entropy);
    if (!Succeeded(result, trace, kMember))
        return;
    Form().progressBar->setRange(0, static_cast<int>(amount));
    Form().progressBar->setValue(0);
    SetScreen(kScreenCollectEntropy);
}

void QtViewImpl::AddEntropy(std::uint8_t byte)
{
    m_entropy->Add(byte);
    if (m_entropy->IsFull())
        EntropyCollected();
    else
        Form().progressBar->setValue(static_cast<int>(m_entropy->Gathered()));
}

void QtViewImpl::EntropyCollected()
{
    static constexpr char kMember[] = "pba::QtViewImpl::EntropyCollected";
    TraceScope trace(kMember);
    FinishCollectingEntropy();
    // Kept alive: a message that the host shows inside may lead to a new collection.
    const std::shared_ptr<EntropyBuffer> entropy = m_entropy;
    CallResult result = kro::kNotInitialized;
    if (m_recoveryLogic)
        result = m_recoveryLogic->SetEntropy(entropy->Bytes());
    DropWaitingInput();
    if (!Succeeded(result, trace, kMember))
        return;
    entropy->Wipe();
    CallDeferredStateChange();
}

kro::result_t QtViewImpl::ShowChallenge(const kro::vector_t<kro::string_t> &challenge)
{
    return Defer("pba::QtViewImpl::ShowChallenge", [this, challenge] { ShowChallengeInternal(challenge); });
}

void QtViewImpl::ShowChallengeInternal(const kro::vector_t<kro::string_t> &challenge)
{
    const TraceScope trace("pba::QtViewImpl::ShowChallengeInternal");
    QFormLayout &rows = *Form().challengeFormLayout;
    while (rows.rowCount() > 0)
        rows.removeRow(0);
    for (const kro::string_t &text : challenge) {
        auto *value = new QLabel(GroupChallenge(FromHostString(text)));
        value->setTextFormat(Qt::PlainText);
        value->setWordWrap(true);
        // Beside its number, though the string itself is never mirrored.
        value->setAlignment(isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft);
        value->setProperty("fixed_font", true);
        rows.addRow(ResponseInput::LineLabel(rows.rowCount() + 1), value);
    }
    SetScreen(kScreenChallenge);
}

void QtViewImpl::OnGotoResponse()
{
    const TraceScope trace("pba::QtViewImpl::OnGotoResponse");
    StartResponceInputInternal();
}

kro::result_t QtViewImpl::StartResponceInput()
{
    return Defer("pba::QtViewImpl::StartResponceInput", [this] { StartResponceInputInternal(); });
}

void QtViewImpl::StartResponceInputInternal()
{
    const TraceScope trace("pba::QtViewImpl::StartResponceInputInternal");
    Form().responseInput->StartInput(m_recoveryLogic);
    Form().responseResultMessage->clear();
    SetScreen(kScreenResponse);
}

} // namespace pba
