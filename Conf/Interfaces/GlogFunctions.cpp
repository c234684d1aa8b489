#include <Conf/Interfaces/Log.h>

#include <glog/logging.h>

namespace {

void Inform(const char* file, int line, const char* text) {
    google::LogMessage(file, line, google::GLOG_INFO).stream() << text;
}

bool IsVerbose(int level) { return VLOG_IS_ON(level); }

}  // namespace

extern "C" const Quenzo::Detail::LogFunctions quenzoConfGlog = {Inform, IsVerbose};
