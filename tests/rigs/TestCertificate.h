#pragma once

#include "rigs/Program.h"

#include <filesystem>
#include <fstream>

namespace kestrovan::rigs {

/// A certificate and its key, made for a test.
struct TestCertificate {
    std::string certificate; ///< files, PEM
    std::string key;
};

struct CertificateOrder {
    std::string host = "localhost";
    std::string validFrom = "20200101000000Z";
    std::string validUntil = "20991231235959Z";
    const TestCertificate* issuer = nullptr; ///< none: it vouches for itself
};

/// Makes it in a folder of its own inside `folder`; if that fails, the files are not there.
inline TestCertificate makeCertificate(const std::filesystem::path& folder, const CertificateOrder& order)
{
    static int made = 0;
    const auto place = folder / ("certificate" + std::to_string(++made));
    std::filesystem::create_directory(place);
    const auto file = [&](const char* name) { return (place / name).string(); };
    std::ofstream(file("index")) << "";
    std::ofstream(file("rules")) << "[ca]\ndefault_ca=maker\n[maker]\ndatabase=" << file("index")
                                 << "\nnew_certs_dir=" << place.string() << "\nrand_serial=yes\ndefault_md=sha256\n"
                                 << "policy=names\n[names]\ncommonName=supplied\n[req]\ndistinguished_name=names\n"
                                 << "[extensions]\nbasicConstraints=CA:TRUE\nsubjectAltName=DNS:" << order.host << "\n";

    TestCertificate result{.certificate = file("certificate.pem"), .key = file("key.pem")};
    run({"openssl", "req", "-new", "-config", file("rules"), "-newkey", "ec", "-pkeyopt",
         "ec_paramgen_curve:prime256v1", "-nodes", "-subj", "/CN=" + order.host, "-keyout", result.key, "-out",
         file("request")});
    std::vector<std::string> sign{"openssl",     "ca",
                                  "-batch",      "-config",
                                  file("rules"), "-extensions",
                                  "extensions",  "-notext",
                                  "-startdate",  order.validFrom,
                                  "-enddate",    order.validUntil,
                                  "-in",         file("request"),
                                  "-out",        result.certificate};
    if (order.issuer)
        sign.insert(sign.end(), {"-cert", order.issuer->certificate, "-keyfile", order.issuer->key});
    else
        sign.insert(sign.end(), {"-selfsign", "-keyfile", result.key});
    run(sign);
    return result;
}

} // namespace kestrovan::rigs
