#include <Conf/Interfaces/Log.h>

#include <glog/logging.h>

#include <map>
#include <mutex>
#include <string>

namespace {

void Inform(const char* file, int line, std::string_view text) {
    google::LogMessage(file, line, google::GLOG_INFO).stream() << text;
}

// As glog's macro decides it for the file that it stands in, so that a level can be set for that file alone. What glog
// is given of a file it keeps for good, and the library that asks may be unloaded: so the file's name is copied, and
// nothing of it is ever destroyed.
bool IsVerbose(const char* file, int level) {
    static auto& mutex = *new std::mutex;
    static auto& sites = *new std::map<std::string, google::SiteFlag>;
    const std::lock_guard lock(mutex);
    auto& [name, site] = *sites.try_emplace(file).first;
    return site.level != nullptr ? *site.level >= level : google::InitVLOG3__(&site, &FLAGS_v, name.c_str(), level);
}

}  // namespace

extern "C" const Quenzo::Detail::LogFunctions quenzoConfGlog = {Inform, IsVerbose};
