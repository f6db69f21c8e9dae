// Stand-in for the host's result and group codes. Covers the values that contracts name; leaves out the rest.
#pragma once

// Value types of a record.
constexpr int RTNONE = 5000;
constexpr int RTREAL = 5001;
constexpr int RTPOINT = 5002;
constexpr int RTSHORT = 5003;
constexpr int RTANG = 5004;
constexpr int RTSTR = 5005;
constexpr int RTENAME = 5006;
constexpr int RTPICKS = 5007;
constexpr int RTORINT = 5008;
constexpr int RT3DPOINT = 5009;
constexpr int RTLONG = 5010;
constexpr int RTVOID = 5014;
constexpr int RTLB = 5016;
constexpr int RTLE = 5017;
constexpr int RTDOTE = 5018;
constexpr int RTNIL = 5019;
constexpr int RTDXF0 = 5020;
constexpr int RTT = 5021;
constexpr int RTRESBUF = 5023;

// Results of the calls.
constexpr int RTNORM = 5100;
constexpr int RTERROR = -5001;
constexpr int RTCAN = -5002;
constexpr int RTREJ = -5003;
constexpr int RTFAIL = -5004;
constexpr int RTKWORD = -5005;

namespace AcDb {

/// What a group code's value is, in a drawing file and in a record list.
enum class GroupKind : unsigned char {
    kText,
    kPoint,
    kReal,
    kInt16,
    kInt32,
    kInt64,
    kBool,
    kHandle,
    kBinary
};

/// By the published ranges of group codes. Codes outside them are texts. A code of a point is its x (10..18,
/// 110..112, 210..213, 1010..1013); the y and z follow in a file as code + 10 and code + 20, which are reals
/// by themselves.
constexpr GroupKind groupKind(int code) {
    if (code < 0) return code == -3 || code == -4 ? GroupKind::kText : GroupKind::kHandle;
    if (code == 5 || code == 105) return GroupKind::kHandle;
    if (code <= 9) return GroupKind::kText;
    if (code <= 18) return GroupKind::kPoint;
    if (code <= 59) return GroupKind::kReal;
    if (code <= 79) return GroupKind::kInt16;
    if (code <= 89) return GroupKind::kText;
    if (code <= 99) return GroupKind::kInt32;
    if (code <= 109) return GroupKind::kText;
    if (code <= 112) return GroupKind::kPoint;
    if (code <= 149) return GroupKind::kReal;
    if (code <= 159) return GroupKind::kText;
    if (code <= 169) return GroupKind::kInt64;
    if (code <= 179) return GroupKind::kInt16;
    if (code <= 209) return GroupKind::kText;
    if (code <= 213) return GroupKind::kPoint;
    if (code <= 239) return GroupKind::kReal;
    if (code <= 269) return GroupKind::kText;
    if (code <= 289) return GroupKind::kInt16;
    if (code <= 299) return GroupKind::kBool;
    if (code <= 309) return GroupKind::kText;
    if (code <= 319) return GroupKind::kBinary;
    if (code <= 369) return GroupKind::kHandle;
    if (code <= 389) return GroupKind::kInt16;
    if (code <= 399) return GroupKind::kHandle;
    if (code <= 409) return GroupKind::kInt16;
    if (code <= 419) return GroupKind::kText;
    if (code <= 429) return GroupKind::kInt32;
    if (code <= 439) return GroupKind::kText;
    if (code <= 459) return GroupKind::kInt32;
    if (code <= 469) return GroupKind::kReal;
    if (code <= 479) return GroupKind::kText;
    if (code <= 481) return GroupKind::kHandle;
    if (code < 1000) return GroupKind::kText;
    if (code == 1004) return GroupKind::kBinary;
    if (code == 1005) return GroupKind::kHandle;
    if (code <= 1009) return GroupKind::kText;
    if (code <= 1013) return GroupKind::kPoint;
    if (code <= 1059) return GroupKind::kReal;
    if (code <= 1070) return GroupKind::kInt16;
    if (code == 1071) return GroupKind::kInt32;
    return GroupKind::kText;
}

} // namespace AcDb
