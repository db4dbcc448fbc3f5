#include "app/document/host_keys.h"

#include "tests/app/document_fixture.h"

namespace quillet {
namespace {

const HostKey kFirst{.type = "ssh-ed25519", .fingerprint = "SHA256:first"};
const HostKey kOther{.type = "ssh-ed25519", .fingerprint = "SHA256:other"};

using HostKeysTest = DocumentTest;

TEST_F(HostKeysTest, TheFirstKeyOfAReachedHostStaysUntilTheUserTakesAnother) {
  HostKeys& keys = doc->GetHostKeys();
  const auto answers = [&](const HostKey& key) { return keys.QuestionFor("bbs.example")(key); };

  EXPECT_EQ(answers(kOther), HostKeyAnswer::kGoOn) << "nothing is known";
  EXPECT_EQ(answers(kFirst), HostKeyAnswer::kGoOn) << "the host that showed the other was never reached";
  keys.OnReached();
  EXPECT_FALSE(keys.AcceptChanged()) << "nothing has changed";
  EXPECT_EQ(answers(kOther), HostKeyAnswer::kChanged);
  keys.OnReached();
  EXPECT_EQ(answers(kOther), HostKeyAnswer::kChanged) << "being there is no consent";
  EXPECT_TRUE(keys.AcceptChanged());
  EXPECT_EQ(answers(kOther), HostKeyAnswer::kGoOn);
  EXPECT_EQ(answers(kFirst), HostKeyAnswer::kChanged);
  EXPECT_EQ(keys.QuestionFor("www.bbs.example")(kFirst), HostKeyAnswer::kGoOn) << "each host has its own";
}

}  // namespace
}  // namespace quillet
