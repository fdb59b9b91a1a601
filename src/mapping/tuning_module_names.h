// Names of the tuning modules, indexed by module number; the last row is the end marker.
#pragma once

#include <cstddef>
#include <iterator>

namespace camtune {
namespace mapping {

// clang-format off
inline constexpr const char* NAMING_TUNING_MODULE[] = {
        "DM", "SNR", "SNRS", "FW_SNR", "CNR_CNR", "EE", "AKS", "REC", "URZ6T", "TDSHP",
        "TDSHP_HFG", "SW_TNR", "SW_DRZH2N", "DRZS8T", "DRZS8T_R2", "DRZS8T_T1", "DRZS4N", "TCC",
        "C2G", "G2C", "G2C_R2", "G2C_R3", "G2CX", "DRZ8T", "OBC_GRAY", "OBC_GRAY_R2",
        "OBC_GRAY_R3", "OBC_OFST", "OBC_OFST_R2", "OBC_OFST_R3", "FW_OBC_PN_R", "FW_OBC_PN_GR",
        "FW_OBC_PN_GB", "FW_OBC_PN_B", "BPC_BPC", "BPC_CT", "BPC_PDC", "BPC_BPC_R2", "BPC_CT_R2",
        "BPC_PDC_R2", "BPC_BPC_R3", "BPC_CT_R3", "BPC_PDC_R3", "QBPC", "QRM", "FRZ", "FW_RA",
        "CNR_CCR", "CNR_ABF", "WPET", "WPE", "FW_FUS", "FW_FUS_CFG", "FW_FUS_NM", "FW_FUS_NR",
        "SW_VHDR", "LPNR_THRES", "MSYUV_MSABF", "MSYUV_MSCCR", "MSYUV_MSCNR", "MSYUV_MSEE",
        "MSYUV_MSSNR", "FW_ME", "FW_ME_CFG_BI", "FW_ME_CFG_BS", "FW_ME_TCY", "FW_MM", "SW_MCNR",
        "MSYUV_MSSNRS", "MFNR", "MFNR_THRES", "BSS", "SW_ME", "SNR_TBL", "SNRS_TBL", "CCM",
        "COLOR_PARAM", "COLOR", "FW_COLOR", "FW_COLOR_SAT", "FW_LMC", "FD_COLOR", "C3D_LUT",
        "C3D_LUT_17", "LSC_CONFIG", "LSC_OTP_CONFIG", "LSC_ZOOM", "LSC_CAP_CT0_TBL",
        "LSC_CAP_CT1_TBL", "LSC_CAP_CT2_TBL", "LSC_CAP_CT3_TBL", "LSC_EN", "LSC_PARA",
        "LSC_OTP_TBL", "LSC_ZOOM_TBL", "TSF_DATA_TBL", "TSF_PARA_TBL", "TSF_PARA_EX_TBL",
        "AIISP_EV", "AIISP_LV_Pre", "AIISP_ISO_APU_Part1", "AIISP_ISO_APU_Part2",
        "AIISP_ISO_APU_Part3", "AIISP_ISO_PostSW", "AIISP_ISO_DRC", "HG", "AIISP_DRC_TBL1",
        "AIISP_DRC_TBL2", "VAINR_APU", "VAINR_SYS", "AISHUTTER20_Selector",
        "AISHUTTER20_ISO_APU_Part1", "AISHUTTER20_ISO_APU_Part2", "AISHUTTER20_ISO_APU_Part3",
        "AISHUTTER20_ISO_PostSW", "AISHUTTER20_ISO_MSTM", "AISHUTTER20_MSTM_TBL1",
        "AISHUTTER20_MSTM_TBL2", "AISHUTTER20_MSTM_TBL3", "AISHUTTER20_MSTM_TBL4",
        "AISHUTTER20_MSTM_TBL5", "NUM",
};
// clang-format on

// Rows before the end marker.
inline constexpr size_t kTuningModuleCount = std::size(NAMING_TUNING_MODULE) - 1;

}  // namespace mapping
}  // namespace camtune
