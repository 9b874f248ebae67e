#include "linux/http/HttpTest.h"
#include "rigs/TestCertificate.h"

namespace kestrovan::test {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class CurlHttpTlsTest : public ::testing::Test {
protected:
    /// How fetching from a server with such a certificate ends where `trusted` is all that is trusted.
    std::string outcomeWith(const rigs::TestCertificate& certificate, const rigs::TestCertificate& trusted)
    {
        const rigs::WebServer server(folder.path(), {certificate.certificate, certificate.key});
        CurlHttp http{trusted.certificate};
        return outcome(fetch(http, requestFor(server.address("/redirect/2"))));
    }
    std::string outcomeWhenTrusted(const rigs::CertificateOrder& order)
    {
        const auto certificate = rigs::makeCertificate(folder.path(), order);
        return outcomeWith(certificate, certificate);
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(CurlHttpTlsTest, SpeaksWithAServerWhoseCertificateIsInOrder)
{
    EXPECT_EQ(outcomeWhenTrusted({}), "status 200: arrived");
    const auto issuer = rigs::makeCertificate(folder.path(), {.host = "issuer.test"});
    EXPECT_EQ(outcomeWith(rigs::makeCertificate(folder.path(), {.issuer = &issuer}), issuer), "status 200: arrived");
}

TEST_F(CurlHttpTlsTest, RefusesACertificateOutOfItsTime)
{
    EXPECT_EQ(outcomeWhenTrusted({.validUntil = "20210101000000Z"}),
              "The server's certificate has expired, or this computer's clock is fast.");
    EXPECT_EQ(outcomeWhenTrusted({.validFrom = "20980101000000Z"}),
              "The server's certificate is not valid yet, or this computer's clock is slow.");
}

TEST_F(CurlHttpTlsTest, RefusesACertificateForAnotherHost)
{
    EXPECT_THAT(outcomeWhenTrusted({.host = "elsewhere.test"}),
                AllOf(StartsWith("The server's certificate does not prove that it is the right server"),
                      HasSubstr("'localhost'")));
}

TEST_F(CurlHttpTlsTest, RefusesACertificateThatNobodyVouchesFor)
{
    const auto trusted = rigs::makeCertificate(folder.path(), {.host = "issuer.test"});
    const auto stranger = rigs::makeCertificate(folder.path(), {.host = "stranger.test"});
    EXPECT_EQ(outcomeWith(rigs::makeCertificate(folder.path(), {}), trusted),
              "The server's certificate is self-signed: nobody that this computer trusts vouches for it.");
    EXPECT_EQ(outcomeWith(rigs::makeCertificate(folder.path(), {.issuer = &stranger}), trusted),
              "The server's certificate comes from an issuer that this computer does not know.");
}

TEST_F(CurlHttpTlsTest, TrustsWhatTheSystemTrustsUnlessToldOtherwise)
{
    const auto certificate = rigs::makeCertificate(folder.path(), {});
    const rigs::WebServer server(folder.path(), {certificate.certificate, certificate.key});
    CurlHttp http;
    EXPECT_THAT(outcome(fetch(http, requestFor(server.address("/hello")))), HasSubstr("self-signed"));
}

TEST_F(CurlHttpTlsTest, NeverFallsBackToAConnectionThatIsNotSecure)
{
    const rigs::WebServer plain(folder.path());
    CurlHttp http;
    const auto asIfSecure = "https" + plain.address("/hello").substr(4);
    EXPECT_THAT(outcome(fetch(http, requestFor(asIfSecure))),
                StartsWith("There is no secure connection with the server: "));
}

TEST_F(CurlHttpTlsTest, RefusesPlainHttpAfterHttps)
{
    const auto certificate = rigs::makeCertificate(folder.path(), {});
    const rigs::WebServer plain(folder.path());
    const rigs::WebServer server(folder.path(), {certificate.certificate, certificate.key});
    CurlHttp http{certificate.certificate};
    const auto outcomeOf = [&](const std::string& address) { return outcome(fetch(http, requestFor(address))); };

    constexpr const char* refused = "The server redirects from https to http.";
    EXPECT_EQ(outcomeOf(server.address("/to?" + plain.address("/hello"))), refused);
    EXPECT_EQ(outcomeOf(plain.address("/to?" + server.address("/hello"))), "status 200: hello");
    EXPECT_EQ(outcomeOf(plain.address("/to?" + server.address("/to?" + plain.address("/hello")))), refused);
}

} // namespace kestrovan::test
