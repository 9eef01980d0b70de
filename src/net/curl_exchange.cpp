// SPDX-License-Identifier: MIT
#include "net/curl_exchange.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "net/request_address.h"

namespace zentorin {

namespace {

constexpr long kMaxRedirects = 10;
constexpr QByteArrayView kSecureScheme = "https:";
// libcurl reads once for each time that the socket is ready: as much as a block, so that a large
// file costs few turns of the event loop.
constexpr long kReceiveBytes = 102'400;

HttpFailure FailureOf(CURLcode code, bool answered) {
  switch (code) {
    case CURLE_OK:
      return HttpFailure::None;
    case CURLE_URL_MALFORMAT:
      return answered ? HttpFailure::BadAnswer : HttpFailure::BadAddress;
    case CURLE_TOO_MANY_REDIRECTS:
      return HttpFailure::BadRedirect;
    case CURLE_UNSUPPORTED_PROTOCOL:
      return answered ? HttpFailure::BadRedirect : HttpFailure::BadAnswer;
    case CURLE_OPERATION_TIMEDOUT:
      return HttpFailure::TimedOut;
    case CURLE_PARTIAL_FILE:
    case CURLE_GOT_NOTHING:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
      return HttpFailure::CutOff;
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_COULDNT_RESOLVE_HOST:
      return HttpFailure::NoName;
    case CURLE_COULDNT_CONNECT:
    case CURLE_PROXY:
      return HttpFailure::NoConnection;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CIPHER:
    case CURLE_PEER_FAILED_VERIFICATION:
      return HttpFailure::NoTrust;
    default:
      return HttpFailure::BadAnswer;
  }
}

bool IsRedirect(const HttpHead& head) {
  return head.status >= 300 && head.status < 400 && !head.Header("Location").isEmpty();
}

bool HasUnequalLengths(const HttpHead& head) {
  const QByteArray first = head.Header("Content-Length");
  return std::ranges::any_of(head.headers, [&first](const HttpHeader& header) {
    return header.name.compare("Content-Length", Qt::CaseInsensitive) == 0 && header.value != first;
  });
}

bool IsBeyondNumbers(const QByteArray& text) {
  bool isNumber = false;
  text.toLongLong(&isNumber);
  return !isNumber && !text.isEmpty() &&
         std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

bool HasLineBreak(const QByteArray& text) {
  return text.contains('\r') || text.contains('\n') || text.contains('\0');
}

}  // namespace

void CurlExchange::Waiter::await_suspend(std::coroutine_handle<> coroutine) {
  Q_ASSERT(!exchange.waiter_);  // one at a time waits for a transfer
  exchange.waiter_ = coroutine;
  exchange.awaited_ = event;
}

CurlExchange::CurlExchange(HttpRequest request, std::vector<CURL*>& touched)
    : request_(std::move(request)),
      address_(WireAddress(request_.url)),
      host_(HostOfWireAddress(address_)),
      touched_(&touched) {}

void CurlExchange::Start(CurlEasy handle, curl_slist* connectTo) {
  easy_ = std::move(handle);
  startedAt_ = lastByteAt_ = measuredAt_ = std::chrono::steady_clock::now();
  SetOptions();
  SetRoute(connectTo);
  SetHeaders();
}

void CurlExchange::SetOptions() {
  CURL* easy = easy_.get();
  curl_easy_setopt(easy, CURLOPT_URL, address_.constData());
  curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
  curl_easy_setopt(easy, CURLOPT_MAXREDIRS, kMaxRedirects);
  curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
  curl_easy_setopt(easy, CURLOPT_NETRC, static_cast<long>(CURL_NETRC_IGNORED));
  curl_easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, 1L);
  curl_easy_setopt(easy, CURLOPT_SSL_VERIFYHOST, 2L);
  curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
  // Without it a cancel would wait for the thread that looks a name up.
  curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
  curl_easy_setopt(easy, CURLOPT_BUFFERSIZE, kReceiveBytes);
  curl_easy_setopt(easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
  curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS,
                   static_cast<long>(request_.connectTimeout.count()));
  if (request_.acceptCompressed) curl_easy_setopt(easy, CURLOPT_ACCEPT_ENCODING, "");

  // A certificate authority of one's own, named as other programs on OpenSSL have it.
  const auto setFromEnvironment = [easy](CURLoption option, const char* name) {
    const QByteArray value = qgetenv(name);
    if (!value.isEmpty()) curl_easy_setopt(easy, option, value.constData());
  };
  setFromEnvironment(CURLOPT_CAINFO, "SSL_CERT_FILE");
  setFromEnvironment(CURLOPT_CAPATH, "SSL_CERT_DIR");
  if (address_.left(kSecureScheme.size()).toLower() == kSecureScheme) WatchSecureEnd();

  curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &CurlExchange::OnHeader);
  curl_easy_setopt(easy, CURLOPT_HEADERDATA, this);
  curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &CurlExchange::OnBody);
  curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
}

// A map leads hosts elsewhere, which a proxy would undo: with one, every request is direct.
void CurlExchange::SetRoute(curl_slist* connectTo) {
  if (connectTo != nullptr) curl_easy_setopt(easy_.get(), CURLOPT_CONNECT_TO, connectTo);
  if (request_.useSystemProxy && connectTo == nullptr) return;
  curl_easy_setopt(easy_.get(), CURLOPT_PROXY, "");
  curl_easy_setopt(easy_.get(), CURLOPT_NOPROXY, "*");
}

void CurlExchange::SetHeaders() {
  for (const HttpHeader& header : std::as_const(request_.headers)) {
    if (HasLineBreak(header.name) || HasLineBreak(header.value)) continue;
    // "Name:" would take the header away; "Name;" sends it empty.
    const QByteArray line =
        header.value.isEmpty() ? header.name + ';' : header.name + ": " + header.value;
    AppendTo(requestHeaders_, line.constData());
  }
  curl_easy_setopt(easy_.get(), CURLOPT_HTTPHEADER, requestHeaders_.get());
  if (!request_.userAgent.isEmpty()) {
    curl_easy_setopt(easy_.get(), CURLOPT_USERAGENT, request_.userAgent.constData());
  }
}

bool CurlExchange::Has(Event event) const {
  if (finished_) return true;
  return event == Event::Head ? headIsFinal_ : !blocks_.empty();
}

std::coroutine_handle<> CurlExchange::TakeReadyWaiter() {
  if (!waiter_ || !Has(awaited_)) return nullptr;
  return std::exchange(waiter_, nullptr);
}

QByteArray CurlExchange::TakeBlock() {
  if (blocks_.empty()) return finished_ ? std::exchange(rest_, {}) : QByteArray();
  QByteArray block = std::move(blocks_.front());
  blocks_.pop_front();
  return block;
}

bool CurlExchange::ShouldPause() const {
  return !finished_ && !paused_ && !draining_ && !blocks_.empty() && !waiter_;
}

void CurlExchange::SetPaused(bool paused) {
  paused_ = paused;
  // The wait was ours, not the server's.
  pausedAt_ = lastByteAt_ = measuredAt_ = std::chrono::steady_clock::now();
  measuredBytes_ = bodyBytes_;
  curl_easy_pause(easy_.get(), paused ? CURLPAUSE_RECV : CURLPAUSE_CONT);
}

void CurlExchange::Finish(HttpFailure failure) {
  if (finished_) return;
  finished_ = true;
  failure_ = failure;
  neverConnected_ = easy_ && !HasConnected();
  if (failure == HttpFailure::Cancelled) {
    blocks_.clear();
    rest_.clear();
  }
  if (headIsFinal_) return;
  const bool wasLed = headBytes_ > 0 && easy_;
  head_ = {};
  if (wasLed) head_.finalUrl = Address();  // to what failed
}

// Without a redirect it stays as it was written, because it is compared as text.
QString CurlExchange::Address() const {
  long redirects = 0;
  const char* address = nullptr;
  curl_easy_getinfo(easy_.get(), CURLINFO_REDIRECT_COUNT, &redirects);
  curl_easy_getinfo(easy_.get(), CURLINFO_EFFECTIVE_URL, &address);
  return redirects > 0 ? QString::fromUtf8(address) : request_.url;
}

// A connection that is used again has no time of connecting, but one of sending.
bool CurlExchange::HasConnected() const {
  if (headBytes_ > 0) return true;
  curl_off_t connected = 0;
  curl_off_t sending = 0;
  curl_easy_getinfo(easy_.get(), CURLINFO_CONNECT_TIME_T, &connected);
  curl_easy_getinfo(easy_.get(), CURLINFO_PRETRANSFER_TIME_T, &sending);
  return connected > 0 || sending > 0;
}

void CurlExchange::FinishWith(CURLcode code) {
  if (failure_ != HttpFailure::None) {  // a callback refused the answer
    Finish(failure_);
    return;
  }
  // A connection that closes inside a head is no failure for libcurl. A length beyond all numbers
  // makes libcurl read to the end of the connection: never whole.
  const bool isShort =
      code == CURLE_OK && (!headIsFinal_ || EndsUnannounced() ||
                           (!head_.Header("Content-Length").isEmpty() && !AnnouncedBytes()));
  HttpFailure failure = isShort ? HttpFailure::CutOff : FailureOf(code, head_.status != 0);
  long systemError = 0;
  curl_easy_getinfo(easy_.get(), CURLINFO_OS_ERRNO, &systemError);
  if (failure == HttpFailure::NoConnection && (systemError == EMFILE || systemError == ENFILE)) {
    failure = HttpFailure::NoDescriptor;
  }
  Finish(failure);
}

std::optional<qint64> CurlExchange::AnnouncedBytes() const {
  bool isNumber = false;
  const qint64 bytes = head_.Header("Content-Length").toLongLong(&isNumber);
  return isNumber ? std::optional(bytes) : std::nullopt;
}

bool CurlExchange::IsWorthDraining() const {
  if (finished_ || !headIsFinal_) return false;
  const std::optional<qint64> announced = AnnouncedBytes();
  if (announced) return *announced - bodyBytes_ <= kMaxDrainBytes;
  return head_.Header("Transfer-Encoding").toLower().contains("chunked");
}

void CurlExchange::StartDraining() {
  draining_ = true;
  drainedAt_ = std::chrono::steady_clock::now();
  blocks_.clear();
  rest_.clear();
  if (paused_) SetPaused(false);
}

HttpFailure CurlExchange::CheckTimes(Time now) {
  const auto isOver = [now](Time since, std::chrono::milliseconds limit) {
    return limit.count() > 0 && now - since >= limit;
  };
  if (draining_) {
    return isOver(drainedAt_, kMaxDrainTime) ? HttpFailure::Cancelled : HttpFailure::None;
  }
  if (paused_) {
    const bool heldTooLong = request_.early && isOver(pausedAt_, kLongestHold);
    return heldTooLong ? HttpFailure::Dropped : HttpFailure::None;
  }
  if (isOver(lastByteAt_, request_.idleTimeout)) return HttpFailure::TimedOut;
  if (!headIsFinal_ && isOver(startedAt_, request_.headTimeout)) return HttpFailure::TimedOut;
  if (isOver(measuredAt_, request_.slowTime)) {
    const auto seconds = std::chrono::duration<double>(now - measuredAt_).count();
    const auto bytes = static_cast<double>(bodyBytes_ - measuredBytes_);
    if (bytes < kSlowestRate * seconds) return HttpFailure::TooSlow;
    measuredAt_ = now;
    measuredBytes_ = bodyBytes_;
  }
  return HttpFailure::None;
}

// Only when it may be needed: libcurl writes each line of its trace before it is looked at.
void CurlExchange::WatchSecureEnd() {
  curl_easy_setopt(easy_.get(), CURLOPT_DEBUGFUNCTION, &CurlExchange::OnTrace);
  curl_easy_setopt(easy_.get(), CURLOPT_DEBUGDATA, this);
  curl_easy_setopt(easy_.get(), CURLOPT_VERBOSE, 1L);
}

// libcurl takes the end of a TLS connection for the end of a body without a length, whether the
// server has announced it or somebody has cut the line.
// NOLINTNEXTLINE(readability-non-const-parameter): the parameters are libcurl's
int CurlExchange::OnTrace(CURL* /*easy*/, curl_infotype type, char* bytes, size_t size,
                          void* exchange) {
  constexpr size_t kAlertBytes = 2;
  constexpr char kCloseNotify = 0;
  const bool isAlert = type == CURLINFO_SSL_DATA_IN && size == kAlertBytes;
  if (isAlert && bytes[1] == kCloseNotify) static_cast<CurlExchange*>(exchange)->closedWell_ = true;
  return 0;
}

// An answer without a length that a secure connection ended without a word.
bool CurlExchange::EndsUnannounced() const {
  const char* scheme = nullptr;
  curl_easy_getinfo(easy_.get(), CURLINFO_SCHEME, &scheme);
  const bool isSecure = scheme != nullptr && qstricmp(scheme, "https") == 0;
  constexpr std::array kBodiless = {204, 304};
  const bool hasBody = std::ranges::find(kBodiless, head_.status) == kBodiless.end();
  return isSecure && !closedWell_ && hasBody && head_.Header("Content-Length").isNull() &&
         !head_.Header("Transfer-Encoding").toLower().contains("chunked");
}

size_t CurlExchange::OnHeader(char* bytes, size_t size, size_t count, void* exchange) {
  auto* self = static_cast<CurlExchange*>(exchange);
  const size_t length = size * count;
  return self->TakeHeaderLine({bytes, static_cast<qsizetype>(length)}) ? length : 0;
}

size_t CurlExchange::OnBody(char* bytes, size_t size, size_t count, void* exchange) {
  auto* self = static_cast<CurlExchange*>(exchange);
  const size_t length = size * count;
  return self->TakeBody({bytes, static_cast<qsizetype>(length)}) ? length : 0;
}

void CurlExchange::Touch() {
  lastByteAt_ = std::chrono::steady_clock::now();
  if (isTouched_) return;
  isTouched_ = true;
  touched_->push_back(easy_.get());
}

bool CurlExchange::Refuse(HttpFailure failure) {
  failure_ = failure;
  return false;
}

bool CurlExchange::TakeHeaderLine(QByteArrayView line) {
  Touch();
  headBytes_ += line.size();
  if (headBytes_ > kMaxHeadBytes) return Refuse(HttpFailure::TooLarge);
  if (headIsFinal_) return true;  // trailers
  const QByteArray text = line.toByteArray().trimmed();
  if (text.isEmpty()) return EndHead();
  if (line.startsWith("HTTP/")) {
    head_ = {};
    head_.status = text.mid(text.indexOf(' ') + 1, 3).toInt();
  } else if (line.startsWith(' ') || line.startsWith('\t')) {
    if (!head_.headers.isEmpty()) head_.headers.last().value += ' ' + text;
  } else if (const qsizetype colon = text.indexOf(':'); colon > 0) {
    head_.headers.append(
        {.name = text.left(colon).trimmed(), .value = text.mid(colon + 1).trimmed()});
  }
  head_.rawHeaders += line;
  return true;
}

bool CurlExchange::EndHead() {
  if (head_.status < 200) return true;
  if (IsRedirect(head_)) {
    WatchSecureEnd();
    return true;
  }
  if (HasUnequalLengths(head_)) return Refuse(HttpFailure::BadAnswer);
  headIsFinal_ = true;
  curl_off_t retryAfter = 0;
  curl_easy_getinfo(easy_.get(), CURLINFO_RETRY_AFTER, &retryAfter);
  head_.retryAfter = std::chrono::seconds(retryAfter);
  if (IsBeyondNumbers(head_.Header("Retry-After"))) head_.retryAfter = std::chrono::hours(1);
  head_.finalUrl = Address();
  return true;
}

bool CurlExchange::TakeBody(QByteArrayView bytes) {
  Touch();
  bodyBytes_ += bytes.size();
  if (draining_) {
    drainedBytes_ += bytes.size();
    return drainedBytes_ <= kMaxDrainBytes;
  }
  if (request_.maxBodyBytes > 0 && bodyBytes_ > request_.maxBodyBytes) {
    return Refuse(HttpFailure::TooLarge);
  }
  while (!bytes.isEmpty()) {
    const qsizetype room = HttpTransfer::kBlockBytes - rest_.size();
    const qsizetype taken = std::min(room, bytes.size());
    if (rest_.size() + taken > CURL_MAX_WRITE_SIZE) rest_.reserve(HttpTransfer::kBlockBytes);
    rest_.append(bytes.data(), taken);
    bytes = bytes.sliced(taken);
    if (rest_.size() == HttpTransfer::kBlockBytes) blocks_.push_back(std::exchange(rest_, {}));
  }
  return true;
}

}  // namespace zentorin
