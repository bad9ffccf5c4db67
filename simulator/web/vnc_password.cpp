#include "simulator/web/vnc_password.h"

#include "simulator/failure.h"

#include <gcrypt.h>
#include <sys/random.h>

namespace ostrel {
namespace {

// The protocol's keys have their bits the other way round.
unsigned char mirrored(unsigned char byte) {
    unsigned mirror = 0;
    for (unsigned bit = 0; bit < 8; ++bit)
        mirror |= (byte >> bit & 1U) << (7 - bit);
    return static_cast<unsigned char>(mirror);
}

} // namespace

VncPassword::VncPassword(const std::string& text) {
    for (size_t i = 0; i < text.size() && i < key.size(); ++i)
        key[i] = mirrored(static_cast<unsigned char>(text[i]));
    if (answerTo({}).empty())
        throw Failure("this machine does not allow the encryption that VNC passwords need");
}

// Empty when the encryption fails.
std::string VncPassword::answerTo(const Challenge& challenge) const {
    gcry_cipher_hd_t cipher = nullptr;
    if (gcry_cipher_open(&cipher, GCRY_CIPHER_DES, GCRY_CIPHER_MODE_ECB, 0) != 0)
        return "";
    // Some passwords, "xxxxpppp" for one, make keys that are called weak. They are used all the same.
    gcry_cipher_ctl(cipher, GCRYCTL_SET_ALLOW_WEAK_KEY, nullptr, 1);
    const gcry_error_t unusable = gcry_cipher_setkey(cipher, key.data(), key.size());
    std::string answer(CHALLENGE_BYTES, '\0');
    const bool isAnswered =
        (unusable == 0 || gcry_err_code(unusable) == GPG_ERR_WEAK_KEY) &&
        gcry_cipher_encrypt(cipher, answer.data(), answer.size(), challenge.data(), challenge.size()) == 0;
    gcry_cipher_close(cipher);
    return isAnswered ? answer : "";
}

bool VncPassword::isAnsweredBy(const Challenge& challenge, const std::string& response) const {
    const std::string right = answerTo(challenge);
    if (right.size() != CHALLENGE_BYTES || response.size() != CHALLENGE_BYTES)
        return false;
    unsigned different = 0;
    for (size_t i = 0; i < CHALLENGE_BYTES; ++i)
        different |= static_cast<unsigned char>(right[i] ^ response[i]);
    return different == 0;
}

Challenge newChallenge() {
    Challenge challenge = {};
    if (getrandom(challenge.data(), challenge.size(), 0) != static_cast<ssize_t>(challenge.size()))
        throw systemFailure("cannot get random numbers");
    return challenge;
}

} // namespace ostrel
