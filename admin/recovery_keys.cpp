#include "admin/recovery_keys.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "admin/failure.h"
#include "admin/passwords.h"
#include "admin/recovery.h"
#include "volume/recovery/enrolment.h"
#include "admin/scratch_file.h"
#include "admin/signals.h"
#include "admin/whole_file.h"

namespace admin {
namespace {

using recovery::KeyFileFault;

constexpr char kSecretName[] = "/recovery.key";
constexpr char kPublicName[] = "/recovery.pub";
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
        throw Failure(path + ": cannot be made: " + std::strerror(errno));
}

void WriteNew(const std::string &path, const std::string &text, mode_t mode)
{
    ScratchFile file(path);
    file.Write(text);
    fchmod(file.File(), mode);
    file.FinishNew();
}

void RequireMissing(const std::string &path)
{
    if (access(path.c_str(), F_OK) == 0)
        throw Failure(path + ": exists already; computers may depend on it, so name another directory");
}

} // namespace

void MakeRecoveryKeys(const RecoveryOptions &options)
{
    const std::string secretPath = options.keys + kSecretName;
    const std::string publicPath = options.keys + kPublicName;
    RequireMissing(secretPath);
    RequireMissing(publicPath);
    const volume::Secret passphrase = PasswordSource(options.passphraseFromStandardInput).NewPassphrase();
    const recovery::SecretKey key = recovery::MakeAdministratorKey();
    const recovery::PublicKey publicKey = recovery::PublicKeyOf(key);
    const std::string sealed = recovery::SealSecretKey(key, passphrase, {});
    {
        const HeldSignals held; // one half without the other would stay for good
        Made made;
        MakeDirectory(options.keys, &made);
        WriteNew(secretPath, sealed, S_IRUSR | S_IWUSR);
        made.Add(secretPath);
        WriteNew(publicPath, recovery::EncodePublicKey(publicKey), kReadableByAll);
        made.Keep();
    }
    std::cout << recovery::Fingerprint(publicKey) << '\n';
}

recovery::SecretKey OpenSecretKeyIn(const std::string &directory, bool passphraseFromStandardInput)
{
    const std::string path = directory + kSecretName;
    const std::string text = ReadWholeFile(path);
    recovery::SecretKey key;
    switch (recovery::OpenSecretKey(text, PasswordSource(passphraseFromStandardInput).Passphrase(), &key)) {
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
