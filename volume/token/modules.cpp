// SPDX-License-Identifier: Apache-2.0
#include "volume/token/modules.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace token {
namespace {

constexpr CK_FLAGS kUsable = CKF_TOKEN_INITIALIZED | CKF_LOGIN_REQUIRED | CKF_USER_PIN_INITIALIZED;

constexpr CK_ULONG kMaxSlots = 256;
constexpr int kMaxQuestions = 5; // while tokens come and go

// What a module answers is believed no further than was asked.
bool GetSlots(CK_FUNCTION_LIST *module, std::vector<CK_SLOT_ID> *slots)
{
    CK_RV result = CKR_BUFFER_TOO_SMALL;
    for (int i = 0; i < kMaxQuestions && result == CKR_BUFFER_TOO_SMALL; ++i) {
        CK_ULONG count = 0;
        // Asked without a place for the answer, a module looks for new slots.
        if (module->C_GetSlotList(CK_TRUE, nullptr, &count) != CKR_OK)
            return false;
        slots->resize(std::min(count, kMaxSlots));
        if (slots->empty())
            return true;
        count = slots->size();
        result = module->C_GetSlotList(CK_TRUE, slots->data(), &count);
        slots->resize(std::min<std::size_t>(count, slots->size()));
    }
    return result == CKR_OK;
}

} // namespace

// What is no file from here is one of the folder in which p11-kit looks.
Modules::Modules(std::string path)
    : m_path(std::move(path))
{
    std::error_code none;
    if (std::filesystem::exists(m_path, none))
        m_path = std::filesystem::absolute(m_path, none);
}

Modules::~Modules()
{
    Unload();
}

void Modules::Load()
{
    if (m_path.empty()) {
        CK_FUNCTION_LIST **modules = p11_kit_modules_load_and_initialize(0);
        for (CK_FUNCTION_LIST **module = modules; module && *module; ++module)
            m_modules.push_back(*module);
        std::free(modules);
        return;
    }
    CK_FUNCTION_LIST *module = p11_kit_module_load(m_path.c_str(), 0);
    if (!module)
        return;
    if (p11_kit_module_initialize(module) == CKR_OK)
        m_modules.push_back(module);
    else
        p11_kit_module_release(module);
}

void Modules::Unload()
{
    for (CK_FUNCTION_LIST *module : m_modules) {
        p11_kit_module_finalize(module);
        p11_kit_module_release(module);
    }
    m_modules.clear();
}

bool Modules::Collect(CK_FUNCTION_LIST *module, std::vector<Token> *tokens) const
{
    std::vector<CK_SLOT_ID> slots;
    CK_INFO maker{};
    if (!GetSlots(module, &slots) || module->C_GetInfo(&maker) != CKR_OK)
        return false;
    for (const CK_SLOT_ID slot : slots) {
        CK_TOKEN_INFO info{};
        CK_SLOT_INFO reader{};
        if (module->C_GetTokenInfo(slot, &info) == CKR_OK && (info.flags & kUsable) == kUsable &&
            module->C_GetSlotInfo(slot, &reader) == CKR_OK)
            tokens->push_back({module, {slot, info, reader, maker}});
    }
    return true;
}

std::vector<Token> Modules::Connected()
{
    if (!m_allAnswer) {
        Unload();
        Load();
    }
    std::vector<Token> tokens;
    m_allAnswer = !m_modules.empty();
    for (CK_FUNCTION_LIST *module : m_modules)
        m_allAnswer = Collect(module, &tokens) && m_allAnswer;
    return tokens;
}

} // namespace token
