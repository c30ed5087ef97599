// SPDX-License-Identifier: Apache-2.0
// A PKCS#11 module before SoftHSM's, whose tokens can be neither pulled out nor locked. It does what the
// lines of the file TOKEN_PROXY say, read anew with each call: a word, and the label of the token that it is
// about.
//
//   hide A          the token is not there
//   flag A N        flags of the token, a number; what it says of tries that are left counts only here
//   label A B       it calls itself B
//   blank A         it has no serial number
//   pad A PIN       its PIN is typed at the reader; this is what the person types there
//   pull-at-login A, pull-at-find A, pull-at-decrypt A    it is pulled out in the middle
//   expired A       its PIN has expired
//   endless A       it never stops finding objects, which are none
//   boast A         it claims to have found or written far more than there was room for
//   always-too-small    there are always more slots than there is room for
//   dead            no slot answers
//   hang F, crash F    that function of the module's interface does, whatever the token
//
// Each login is a line of the file TOKEN_PROXY.log: the label, and whether a PIN came with it.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include <p11-kit/pkcs11.h>

namespace {

CK_FUNCTION_LIST *s_real = nullptr;
CK_FUNCTION_LIST s_proxy;
std::set<std::string> s_pulled;

std::string ControlFile()
{
    const char *path = std::getenv("TOKEN_PROXY");
    return path ? path : "";
}

// What follows the word and the label; null when there is no such line.
const std::string *Find(const std::string &word, const std::string &label)
{
    static std::string rest;
    std::ifstream file(ControlFile());
    for (std::string line; std::getline(file, line);) {
        std::istringstream stream(line);
        std::string itsWord, itsLabel;
        stream >> itsWord >> itsLabel >> std::ws;
        rest.clear();
        std::getline(stream, rest);
        if (itsWord == word && itsLabel == label)
            return &rest;
    }
    return nullptr;
}

std::string RealLabel(CK_SLOT_ID slot)
{
    CK_TOKEN_INFO info;
    if (s_real->C_GetTokenInfo(slot, &info) != CKR_OK)
        return {};
    const std::string label(reinterpret_cast<const char *>(info.label), sizeof info.label);
    return label.substr(0, label.find_last_not_of(' ') + 1);
}

bool IsThere(CK_SLOT_ID slot)
{
    const std::string label = RealLabel(slot);
    if (!Find("pull-at-login", label) && !Find("pull-at-find", label) && !Find("pull-at-decrypt", label))
        s_pulled.erase(label);
    return !label.empty() && !Find("hide", label) && s_pulled.count(label) == 0;
}

std::string LabelOf(CK_SESSION_HANDLE session)
{
    CK_SESSION_INFO info;
    return s_real->C_GetSessionInfo(session, &info) == CKR_OK ? RealLabel(info.slotID) : "";
}

// Whether the token leaves just now.
bool Leaves(const char *when, CK_SESSION_HANDLE session)
{
    const std::string label = LabelOf(session);
    return Find(when, label) && s_pulled.insert(label).second;
}

CK_RV GetSlotList(CK_BBOOL, CK_SLOT_ID *slots, CK_ULONG *count)
{
    CK_ULONG real = 64; // more than there are
    std::vector<CK_SLOT_ID> there(real);
    if (Find("dead", "") || s_real->C_GetSlotList(CK_TRUE, there.data(), &real) != CKR_OK)
        return CKR_GENERAL_ERROR;
    there.resize(real);
    if (Find("always-too-small", "")) {
        *count = slots ? *count + 1 : ~CK_ULONG{0};
        return slots ? CKR_BUFFER_TOO_SMALL : CKR_OK;
    }
    std::erase_if(there, [](CK_SLOT_ID slot) { return !IsThere(slot); });
    const bool fits = !slots || there.size() <= *count;
    *count = there.size();
    if (slots && fits)
        std::copy(there.begin(), there.end(), slots);
    return fits ? CKR_OK : CKR_BUFFER_TOO_SMALL;
}

CK_RV GetTokenInfo(CK_SLOT_ID slot, CK_TOKEN_INFO *info)
{
    if (!IsThere(slot))
        return CKR_TOKEN_NOT_PRESENT;
    const CK_RV result = s_real->C_GetTokenInfo(slot, info);
    const std::string label = RealLabel(slot);
    info->flags &= ~CK_FLAGS{CKF_USER_PIN_COUNT_LOW | CKF_USER_PIN_FINAL_TRY | CKF_USER_PIN_LOCKED};
    if (const std::string *flags = Find("flag", label))
        info->flags |= std::stoul(*flags, nullptr, 0);
    if (Find("pad", label))
        info->flags |= CKF_PROTECTED_AUTHENTICATION_PATH;
    if (Find("blank", label))
        std::memset(info->serialNumber, ' ', sizeof info->serialNumber);
    if (const std::string *other = Find("label", label)) {
        std::memset(info->label, ' ', sizeof info->label);
        std::memcpy(info->label, other->data(), std::min(other->size(), sizeof info->label));
    }
    return result;
}

CK_RV OpenSession(CK_SLOT_ID slot, CK_FLAGS flags, void *application, CK_NOTIFY notify,
                  CK_SESSION_HANDLE *session)
{
    if (!IsThere(slot))
        return CKR_TOKEN_NOT_PRESENT;
    return s_real->C_OpenSession(slot, flags, application, notify, session);
}

CK_RV Login(CK_SESSION_HANDLE session, CK_USER_TYPE user, unsigned char *pin, CK_ULONG length)
{
    const std::string label = LabelOf(session);
    std::ofstream(ControlFile() + ".log", std::ios::app)
        << label << (pin ? " with PIN\n" : " at the reader\n");
    if (Leaves("pull-at-login", session))
        return CKR_DEVICE_REMOVED;
    if (Find("expired", label))
        return CKR_PIN_EXPIRED;
    const std::string *atReader = Find("pad", label);
    if (!atReader)
        return s_real->C_Login(session, user, pin, length);
    std::string typed = *atReader;
    return pin ? CKR_ARGUMENTS_BAD
               : s_real->C_Login(session, user, reinterpret_cast<unsigned char *>(typed.data()),
                                 typed.size());
}

CK_RV FindObjectsInit(CK_SESSION_HANDLE session, CK_ATTRIBUTE *wanted, CK_ULONG count)
{
    return Leaves("pull-at-find", session) ? CKR_DEVICE_REMOVED
                                           : s_real->C_FindObjectsInit(session, wanted, count);
}

CK_RV FindObjects(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE *objects, CK_ULONG room, CK_ULONG *count)
{
    constexpr CK_ULONG kFarMore = 100'000'000;
    const std::string label = LabelOf(session);
    if (Find("endless", label)) {
        std::fill(objects, objects + room, kFarMore);
        *count = room;
        return CKR_OK;
    }
    const CK_RV result = s_real->C_FindObjects(session, objects, room, count);
    if (Find("boast", label) && *count > 0)
        *count = kFarMore;
    return result;
}

CK_RV GetAttributeValue(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, CK_ATTRIBUTE *wanted,
                        CK_ULONG count)
{
    const CK_RV result = s_real->C_GetAttributeValue(session, object, wanted, count);
    if (Find("boast", LabelOf(session)))
        wanted->ulValueLen = ~CK_ULONG{0} / 2;
    return result;
}

CK_RV Decrypt(CK_SESSION_HANDLE session, unsigned char *encrypted, CK_ULONG encryptedLength,
              unsigned char *plain, CK_ULONG *length)
{
    if (Leaves("pull-at-decrypt", session))
        return CKR_GENERAL_ERROR;
    const CK_RV result = s_real->C_Decrypt(session, encrypted, encryptedLength, plain, length);
    if (Find("boast", LabelOf(session)))
        *length = ~CK_ULONG{0} / 2;
    return result;
}

// A function that can hang and crash before it does anything.
template <auto Function, typename = decltype(Function)>
struct Troubled;

template <auto Function, typename... Arguments>
struct Troubled<Function, CK_RV (*CK_FUNCTION_LIST::*)(Arguments...)>
{
    static inline CK_RV (*s_proper)(Arguments...);
    static inline const char *s_name;

    static CK_RV Call(Arguments... arguments)
    {
        while (Find("hang", s_name))
            pause();
        if (Find("crash", s_name))
            std::abort();
        return s_proper(arguments...);
    }
    static void Install(const char *name)
    {
        s_name = name;
        s_proper = std::exchange(s_proxy.*Function, Call);
    }
};

} // namespace

extern "C" __attribute__((visibility("default"))) CK_RV C_GetFunctionList(CK_FUNCTION_LIST **list)
{
    void *library = dlopen("/usr/lib/softhsm/libsofthsm2.so", RTLD_NOW | RTLD_LOCAL);
    const auto get =
        library ? reinterpret_cast<CK_C_GetFunctionList>(dlsym(library, "C_GetFunctionList")) : nullptr;
    if (!get || get(&s_real) != CKR_OK)
        return CKR_GENERAL_ERROR;
    s_proxy = *s_real;
    s_proxy.C_GetFunctionList = C_GetFunctionList;
    s_proxy.C_GetSlotList = GetSlotList;
    s_proxy.C_GetTokenInfo = GetTokenInfo;
    s_proxy.C_OpenSession = OpenSession;
    s_proxy.C_Login = Login;
    s_proxy.C_FindObjectsInit = FindObjectsInit;
    s_proxy.C_FindObjects = FindObjects;
    s_proxy.C_GetAttributeValue = GetAttributeValue;
    s_proxy.C_Decrypt = Decrypt;
#define INSTALL(name) Troubled<&CK_FUNCTION_LIST::name>::Install(#name)
    INSTALL(C_Initialize);
    INSTALL(C_Finalize);
    INSTALL(C_GetInfo);
    INSTALL(C_GetSlotList);
    INSTALL(C_GetSlotInfo);
    INSTALL(C_GetTokenInfo);
    INSTALL(C_OpenSession);
    INSTALL(C_CloseSession);
    INSTALL(C_Login);
    INSTALL(C_Logout);
    INSTALL(C_FindObjectsInit);
    INSTALL(C_FindObjects);
    INSTALL(C_FindObjectsFinal);
    INSTALL(C_GetAttributeValue);
    INSTALL(C_DecryptInit);
    INSTALL(C_Decrypt);
    INSTALL(C_DeriveKey);
#undef INSTALL
    *list = &s_proxy;
    return CKR_OK;
}
