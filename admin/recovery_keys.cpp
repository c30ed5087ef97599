// SPDX-License-Identifier: Apache-2.0
#include "admin/recovery_keys.h"

#include <cerrno>
#include <cstdio>
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "admin/failure.h"
#include "admin/json_output.h"
#include "admin/passwords.h"
#include "admin/progress.h"
#include "admin/recovery.h"
#include "admin/scratch_file.h"
#include "admin/signals.h"
#include "admin/whole_file.h"
#include "volume/recovery/enrolment.h"

namespace admin {
namespace {

using recovery::KeyFileFault;

constexpr char kSecretName[] = "/recovery.key";
constexpr char kPublicName[] = "/recovery.pub";
constexpr char kDeriving[] = "deriving the key from the passphrase";
constexpr mode_t kOwnersDirectory = 0700;
constexpr mode_t kReadableByAll = 0644;

// Removes what was made, the newest first, unless all of it was.
class Made
{
public:
    Made() = default;
    ~Made()
    {
        while (!m_paths.empty()) {
            std::remove(m_paths.back().c_str());
            m_paths.pop_back();
        }
    }
    Made(const Made &) = delete;
    Made &operator=(const Made &) = delete;

    void Add(const std::string &path) { m_paths.push_back(path); }
    void Keep() { m_paths.clear(); }

private:
    std::vector<std::string> m_paths;
};

void MakeDirectory(const std::string &path, Made *made)
{
    if (mkdir(path.c_str(), kOwnersDirectory) == 0)
        made->Add(path);
    else if (errno != EEXIST)
        throw FileFailure(path, "cannot be made", errno);
}

void WriteNew(const std::string &path, const std::string &text, mode_t mode)
{
    ScratchFile file(path);
    file.Write(text);
    fchmod(file.File(), mode);
    file.FinishNew();
}

bool Exists(const std::string &path)
{
    return access(path.c_str(), F_OK) == 0;
}

void RequireMissing(const std::string &path)
{
    if (Exists(path))
        throw Failure(path + ": exists already; computers may depend on it, so name another directory");
}

// A loss of power may have come between the two.
void RequireNeither(const std::string &directory)
{
    if (Exists(directory + kSecretName) && !Exists(directory + kPublicName))
        throw Failure(directory + kSecretName +
                      ": exists already, without its recovery.pub; write that with " +
                      "pba_admin recovery pubkey, or name another directory");
    RequireMissing(directory + kSecretName);
    RequireMissing(directory + kPublicName);
}

void WriteNewPublicKey(const std::string &directory, const recovery::PublicKey &key)
{
    WriteNew(directory + kPublicName, recovery::EncodePublicKey(key), kReadableByAll);
}

void PrintFingerprint(const recovery::PublicKey &key, bool json)
{
    const std::string fingerprint = recovery::Fingerprint(key);
    if (json)
        PrintJson(nlohmann::json{{"fingerprint", fingerprint}});
    else
        std::cout << fingerprint << '\n';
}

} // namespace

void MakeRecoveryKeys(const RecoveryOptions &options)
{
    const std::string secretPath = options.keys + kSecretName;
    RequireNeither(options.keys);
    const base::Secret passphrase = PasswordSource(options.passphraseFromStandardInput).NewPassphrase();
    const Progress progress(kDeriving);
    const recovery::SecretKey key = recovery::MakeAdministratorKey();
    const recovery::PublicKey publicKey = recovery::PublicKeyOf(key);
    const std::string sealed = recovery::SealSecretKey(key, passphrase, {});
    {
        const HeldSignals held; // one half without the other would stay
        Made made;
        MakeDirectory(options.keys, &made);
        WriteNew(secretPath, sealed, S_IRUSR | S_IWUSR);
        made.Add(secretPath);
        WriteNewPublicKey(options.keys, publicKey);
        made.Keep();
    }
    PrintFingerprint(publicKey, options.json);
}

void WritePublicKey(const RecoveryOptions &options)
{
    RequireMissing(options.keys + kPublicName);
    const auto key =
        recovery::PublicKeyOf(OpenSecretKeyIn(options.keys, options.passphraseFromStandardInput));
    WriteNewPublicKey(options.keys, key);
    PrintFingerprint(key, options.json);
}

recovery::SecretKey OpenSecretKeyIn(const std::string &directory, bool passphraseFromStandardInput)
{
    const std::string path = directory + kSecretName;
    const std::string text = ReadWholeFile(path);
    const base::Secret passphrase = PasswordSource(passphraseFromStandardInput).Passphrase();
    const Progress progress(kDeriving);
    recovery::SecretKey key;
    switch (recovery::OpenSecretKey(text, passphrase, &key)) {
    case KeyFileFault::None:
        return key;
    case KeyFileFault::NoKeyFile:
        throw Failure(path + ": not an administrator's secret key; name the directory that keygen has made");
    case KeyFileFault::WrongPassphrase:
        throw Failure(path + ": wrong passphrase, or the file was altered");
    case KeyFileFault::OutOfMemory:
        break;
    }
    throw Failure(path + ": not enough memory to derive the key from the passphrase; free some");
}

recovery::PublicKey ReadPublicKey(const std::string &path)
{
    const std::optional<recovery::PublicKey> key = recovery::DecodePublicKey(ReadWholeFile(path));
    if (!key)
        throw Failure(path +
                      ": not an administrator's public key; name the recovery.pub that keygen has made");
    return *key;
}

} // namespace admin
