#include <bench/ForgetfulOutput.h>

#include <cstddef>

namespace Quenzo::Bench {

namespace {

class ForgetfulOutput : public RefCounted<Core::IDataOutput> {
public:
    void Write(const void* /*bytes*/, std::size_t size) override { count_ += size; }

private:
    std::size_t count_ = 0;
};

}  // namespace

SP<Core::IDataOutput> MakeForgetfulOutput() { return SP<Core::IDataOutput>(new ForgetfulOutput()); }

}  // namespace Quenzo::Bench
