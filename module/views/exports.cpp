// SPDX-License-Identifier: Apache-2.0
// The four functions by which a host sees the module.
#include <memory>
#include <new>

#include "module/trace/trace.h"
#include "module/views/main_view.h"
#include "module/views/translator.h"

pba::IMainView *CreateMainView()
{
    const pba::TraceScope trace("CreateMainView");
    return new (std::nothrow) pba::QtMainView;
}

void DeleteMainView(pba::IMainView *view)
{
    pba::TraceScope trace("DeleteMainView");
    const auto *mainView = static_cast<pba::QtMainView *>(view);
    if (mainView && mainView->IsRunning())
        trace.SetResult(kro::kInvalidState);
    else
        delete mainView;
}

pba::ITranslator *CreateTranslator()
{
    pba::TraceScope trace("CreateTranslator");
    try {
        auto translator = std::make_unique<pba::Translator>();
        if (translator->Load())
            return translator.release();
        trace.SetResult(kro::kNotFound);
    } catch (const std::bad_alloc &) {
        trace.SetResult(kro::kOutOfMemory);
    }
    return nullptr;
}

void DeleteTranslator(pba::ITranslator *translator)
{
    const pba::TraceScope trace("DeleteTranslator");
    delete translator;
}
