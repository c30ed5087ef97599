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
    const pba::TraceScope trace("DeleteMainView");
    delete view;
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
