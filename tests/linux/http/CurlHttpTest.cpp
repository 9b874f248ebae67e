#include "linux/http/HttpTest.h"
#include "rigs/Deadline.h"
#include "rigs/FakeNames.h"

#include <atomic>

namespace kestrovan::test {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char* timedOut = "The server did not answer in time.";

class CurlHttpTest : public ::testing::Test {
protected:
    HttpResult get(const std::string& path) { return fetch(http, requestFor(server.address(path))); }
    std::string outcomeOf(const std::string& path) { return outcome(get(path)); }

    TemporaryFolder folder;
    rigs::WebServer server{folder.path()};
    CurlHttp http;
};

} // namespace

TEST_F(CurlHttpTest, AnswersComeAsTheServerSentThem)
{
    EXPECT_EQ(outcomeOf("/hello"), "status 200: hello");
    EXPECT_EQ(outcomeOf("/chunked"), "status 200: hello");
    EXPECT_EQ(outcomeOf("/long"), "status 200: hello");
    EXPECT_EQ(outcomeOf("/body/0"), "status 200: ");
    EXPECT_EQ(outcomeOf("/no-content"), "status 204: no body");
    EXPECT_EQ(outcomeOf("/not-modified"), "status 304: ");
    EXPECT_EQ(outcomeOf("/missing"), "status 404: no such page");
    EXPECT_EQ(outcomeOf("/status/500"), "status 500: whatever");
}

TEST_F(CurlHttpTest, SendsTheHeadersOfTheRequestInPlaceOfItsOwn)
{
    auto request = requestFor(server.address("/echo"));
    request.headers = {{"User-Agent", "Guard/1"}, {"Accept", "application/json"}, {"Pragma", "no-cache"}};
    const auto seen = std::get<HttpResponse>(fetch(http, request)).body;

    EXPECT_THAT(seen, AllOf(HasSubstr("GET /echo HTTP/1.1\r\n"), HasSubstr("User-Agent: Guard/1\r\n"),
                            HasSubstr("Accept: application/json\r\n"), HasSubstr("Pragma: no-cache\r\n")));
    EXPECT_THAT(seen, AllOf(Not(HasSubstr("Accept: */*")), Not(HasSubstr("Accept-Encoding"))));
}

TEST_F(CurlHttpTest, KeepsNoCookiesEvenWithinOneExchange)
{
    EXPECT_THAT(std::get<HttpResponse>(get("/cookie")).body, AllOf(HasSubstr("GET /echo"), Not(HasSubstr("Cookie"))));
}

TEST_F(CurlHttpTest, TellsNoOtherHostTheNameAndPasswordInAnAddress)
{
    const auto echo = [&](const std::string& target) {
        const auto host = "user:secret@127.0.0.1";
        return std::get<HttpResponse>(fetch(http, requestFor(server.address("/to?" + target, host)))).body;
    };
    EXPECT_THAT(echo("/echo"), HasSubstr("Authorization: Basic"));
    EXPECT_THAT(echo(server.address("/echo", "localhost")), AllOf(HasSubstr("/echo"), Not(HasSubstr("Authorization"))));
}

TEST_F(CurlHttpTest, BrokenAnswersAreErrors)
{
    EXPECT_THAT(outcomeOf("/short"), HasSubstr("bytes remaining"));
    EXPECT_THAT(outcomeOf("/reset"), HasSubstr("reset by peer"));
    EXPECT_THAT(outcomeOf("/nothing"), HasSubstr("Empty reply"));
    EXPECT_THAT(outcomeOf("/bad-chunk"), HasSubstr("chunk"));
    EXPECT_EQ(outcomeOf("/endless-headers"), "The server's answer begins with too many headers.");
    EXPECT_EQ(outcomeOf("/no-http"), "not HTTP");
}

TEST_F(CurlHttpTest, SaysWhyNobodyCanBeReached)
{
    EXPECT_THAT(outcome(fetch(http, requestFor("http://127.0.0.1:1/"))), HasSubstr("Failed to connect"));
    EXPECT_THAT(outcome(fetch(http, requestFor("http://nobody.invalid/"))), HasSubstr("nobody.invalid"));
    EXPECT_THAT(outcome(fetch(http, requestFor("ftp://127.0.0.1/"))), HasSubstr("not supported or disabled"));
    EXPECT_THAT(outcome(fetch(http, requestFor("file:///etc/hostname"))), HasSubstr("not supported or disabled"));
}

TEST_F(CurlHttpTest, FollowsFiveRedirectsAndNoMore)
{
    EXPECT_EQ(outcomeOf("/redirect/5"), "status 200: arrived");
    EXPECT_EQ(outcomeOf("/redirect/6"), "The server redirects too often.");
    EXPECT_EQ(outcomeOf("/loop"), "The server redirects too often.");
    for (const auto* status : {"301", "302", "303", "307", "308"})
        EXPECT_EQ(outcomeOf(std::string("/to/") + status + "?/hello"), "status 200: hello") << status;
    for (const auto* status : {"300", "304", "305", "306"})
        EXPECT_THAT(outcomeOf(std::string("/to/") + status + "?/hello"), StartsWith(std::string("status ") + status));
    EXPECT_EQ(outcomeOf("/nowhere"), "status 302: moved");
}

TEST_F(CurlHttpTest, HasEveryRedirectReviewedAndFetchesWhatTheReviewSays)
{
    std::vector<std::string> reviewed;
    auto request = requestFor(server.address("/redirect/2"));
    request.reviewRedirect = [&](const std::string& address) -> std::optional<std::string> {
        reviewed.push_back(address);
        return reviewed.size() == 1 ? server.address("/to?file:///etc/hostname") : std::optional<std::string>();
    };
    EXPECT_EQ(outcome(fetch(http, request)), "The server redirects to an address that is not allowed.");
    EXPECT_THAT(reviewed, ElementsAre(server.address("/redirect/1"), "file:///etc/hostname"));
    for (const auto* address : {"/to?file:///etc/hostname", "/to?ftp://127.0.0.1/"})
        EXPECT_THAT(outcomeOf(address), HasSubstr("not supported or disabled")) << "even without a review";
}

TEST_F(CurlHttpTest, ConnectsToNoRefusedAddressWhateverNameLeadsThere)
{
    rigs::fakeNames::leadTo("inside.test", {"127.0.0.1"});
    rigs::fakeNames::leadTo("mapped.test", {"::ffff:127.0.0.1"});
    for (const auto* host : {"inside.test", "mapped.test", "127.0.0.1"}) {
        auto request = requestFor(server.address("/hello", host));
        std::string asked;
        request.mayConnect = [&](const std::string& numericHost) {
            asked = numericHost;
            return false;
        };
        EXPECT_EQ(outcome(fetch(http, request)), "The server's name leads to an address that is not allowed.") << host;
        EXPECT_EQ(asked, host == std::string("mapped.test") ? "::ffff:127.0.0.1" : "127.0.0.1");
    }
    EXPECT_EQ(outcome(fetch(http, requestFor(server.address("/hello", "inside.test")))), "status 200: hello");
}

TEST_F(CurlHttpTest, TriesTheOtherAddressesOfANameWithARefusedOne)
{
    rigs::fakeNames::leadTo("both.test", {"169.254.169.254", "127.0.0.1"});
    auto request = requestFor(server.address("/hello", "both.test"));
    request.mayConnect = [](const std::string& numericHost) { return numericHost != "169.254.169.254"; };
    EXPECT_EQ(outcome(fetch(http, request)), "status 200: hello");
}

TEST_F(CurlHttpTest, OneTimeLimitHoldsForEverything)
{
    rigs::fakeNames::hang("hanging.test");
    for (const auto* path : {"/silent", "/drip", "/endless", "/slow-redirects", "hanging name"}) {
        const bool isName = path == std::string("hanging name");
        const auto address = isName ? server.address("/hello", "hanging.test") : server.address(path);
        const auto begin = steady_clock::now();
        EXPECT_EQ(outcome(fetch(http, requestFor(address, 400ms))), timedOut) << path;
        EXPECT_GT(steady_clock::now() - begin, 300ms) << path;
        EXPECT_LT(steady_clock::now() - begin, 20s) << path;
    }
    rigs::fakeNames::release();
}

TEST_F(CurlHttpTest, EndsAtOnceInTheMiddleOfAnythingAndStaysSilent)
{
    rigs::fakeNames::hang("quitting.test");
    std::atomic<int> answers = 0;
    steady_clock::time_point begin;
    {
        CurlHttp quitting;
        for (const auto& address : {server.address("/silent"), server.address("/drip"), server.address("/endless"),
                                    server.address("/hello", "quitting.test")})
            quitting.get(requestFor(address), [&](const HttpResult&) { ++answers; });
        EXPECT_TRUE(rigs::waitUntil([] { return rigs::fakeNames::hanging() > 0; }));
        begin = steady_clock::now();
    }
    EXPECT_LT(steady_clock::now() - begin, 10s) << "the requests had 30";
    EXPECT_EQ(answers, 0);
    rigs::fakeNames::release();
}

} // namespace kestrovan::test
