#include "simulator/web/static_files.h"

#include "simulator/web/http.h"

#include <fstream>
#include <iterator>
#include <sys/stat.h>

namespace ostrel {
namespace {

struct ContentType {
    const char* ending;
    const char* type;
};
constexpr ContentType CONTENT_TYPES[] = {
    {".html", "text/html; charset=utf-8"},
    {".js", "text/javascript; charset=utf-8"},
    {".css", "text/css; charset=utf-8"},
    {".svg", "image/svg+xml"},
};

bool endsWith(const std::string& text, const std::string& ending) {
    return text.size() >= ending.size() && text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

const char* typeOf(const std::string& path) {
    for (const ContentType& row : CONTENT_TYPES)
        if (endsWith(path, row.ending))
            return row.type;
    return nullptr;
}

// The file behind a target; empty when there cannot be one. Plain names only: nothing that could lead elsewhere.
std::string pathOf(const StaticFiles& files, std::string target) {
    constexpr const char* PLAIN = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-/";
    const std::string novnc = "/novnc/";
    target.erase(std::min(target.find('?'), target.size()));
    if (target == "/")
        target = "/index.html";
    if (target.find_first_not_of(PLAIN) != std::string::npos || target.find("..") != std::string::npos)
        return "";
    if (target.rfind(novnc, 0) == 0)
        return files.novnc + target.substr(novnc.size() - 1);
    return files.page + target;
}

} // namespace

std::string
answerWithFile(const StaticFiles& files, const std::string& target, bool withBody, const std::string& host) {
    const std::string path = pathOf(files, target);
    struct stat status = {};
    const char* type = typeOf(path);
    if (path.empty() || type == nullptr || stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return answer("404 Not Found", "text/plain", "There is no such page.\n", withBody);
    std::ifstream file(path, std::ios::binary);
    const std::string body{std::istreambuf_iterator<char>(file), {}};
    return answer("200 OK", type, body, withBody, host);
}

} // namespace ostrel
