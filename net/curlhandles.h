#pragma once

#include <curl/curl.h>

#include <memory>

namespace quillon {

struct CurlDeleter
{
    void operator()(CURL *transfer) const { curl_easy_cleanup(transfer); }
    void operator()(curl_slist *lines) const { curl_slist_free_all(lines); }
    void operator()(CURLU *url) const { curl_url_cleanup(url); }
};

struct CurlMultiDeleter
{
    void operator()(CURLM *transfers) const { curl_multi_cleanup(transfers); }
};

// The handles of libcurl, freed when they go out of scope.
using CurlTransfer = std::unique_ptr<CURL, CurlDeleter>;
using CurlTransfers = std::unique_ptr<CURLM, CurlMultiDeleter>;
using CurlLines = std::unique_ptr<curl_slist, CurlDeleter>;
using CurlUrl = std::unique_ptr<CURLU, CurlDeleter>;

} // namespace quillon
