// NDD, the per-frame dump framework: the pipeline asks it, buffer by buffer, whether an item of
// a category and module may be dumped for the current frame, and hands the data over; NDD names
// the file from its configuration and writes it, at once or through its writer threads.
//
// This header holds the interface (INdd), its starter (NddInitializer), the request record, the
// key helpers and metadata tags, and the enumerations whose names make up configuration keys and
// file names. Each enumeration and its name table are built from one row list, so a value and its
// name cannot drift apart; the names are served by NddAutoGenExcel2C (ndd_tables.h).
// docs/ndd.md describes the properties, the configuration file and the dump folders.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "camtune/export.h"

// Row lists in index order. Appending is safe; reordering renumbers the enumeration and changes
// every configuration key that names a row.
// clang-format off
CAMTUNE_EXPORT_BEGIN

#define CAMTUNE_NDD_CATEGORY_ROWS(ROW) ROW(Capture) ROW(Streaming)

#define CAMTUNE_NDD_MODULE_ROWS(ROW) \
    ROW(AAHO) ROW(AAO) ROW(ACTSO) ROW(AE_OUT) ROW(AFO) ROW(AI_DEPTH) ROW(AI_DEPTH_CFM) \
    ROW(AI_DEPTH_PRE_WPE) ROW(AIFA) ROW(AIFLASH_INFO) ROW(AIHDR_DRCCORE_AE_EVD) \
    ROW(AIHDR_DRCCORE_GTM_LV) ROW(AIHDR_DRCCORE_IN_APPLY_RAWIN) ROW(AIHDR_DRCCORE_IN_FACEINFO) \
    ROW(AIHDR_DRCCORE_IN_NVRAM) ROW(AIHDR_DRCCORE_IN_STAT_RAWIN) ROW(AIHDR_DRCCORE_IN_STRUCT) \
    ROW(AIHDR_DRCCORE_LIN_TSF) ROW(AIHDR_DRCCORE_OUT_APPLY_GTMT) ROW(AIHDR_DRCCORE_OUT_APPLY_LTM) \
    ROW(AIHDR_DRCCORE_OUT_APPLY_RAWOUT) ROW(AIHDR_HDRCORE_CONFIG) ROW(AIHDR_HDRCORE_DLA_IN) \
    ROW(AIHDR_HDRCORE_DLA_OUT) ROW(AIHDR_HDRCORE_INPUT_4CH_0) ROW(AIHDR_HDRCORE_INPUT_4CH_1) \
    ROW(AIHDR_HDRCORE_INPUT_4CH_10) ROW(AIHDR_HDRCORE_INPUT_4CH_11) \
    ROW(AIHDR_HDRCORE_INPUT_4CH_12) ROW(AIHDR_HDRCORE_INPUT_4CH_13) \
    ROW(AIHDR_HDRCORE_INPUT_4CH_14) ROW(AIHDR_HDRCORE_INPUT_4CH_15) ROW(AIHDR_HDRCORE_INPUT_4CH_2) \
    ROW(AIHDR_HDRCORE_INPUT_4CH_3) ROW(AIHDR_HDRCORE_INPUT_4CH_4) ROW(AIHDR_HDRCORE_INPUT_4CH_5) \
    ROW(AIHDR_HDRCORE_INPUT_4CH_6) ROW(AIHDR_HDRCORE_INPUT_4CH_7) ROW(AIHDR_HDRCORE_INPUT_4CH_8) \
    ROW(AIHDR_HDRCORE_INPUT_4CH_9) ROW(AIHDR_HDRCORE_OUTPUT) ROW(AIHDR_MODEL_NVRAM_OUT) ROW(AIMA) \
    ROW(AINR_MODEL_NVRAM) ROW(AINR_NRCORE_CONFIG) ROW(AINR_NRCORE_DLA_IN) ROW(AINR_NRCORE_DLA_OUT) \
    ROW(AINR_NRCORE_INPUT_4CH_0) ROW(AINR_NRCORE_INPUT_4CH_1) ROW(AINR_NRCORE_INPUT_4CH_10) \
    ROW(AINR_NRCORE_INPUT_4CH_11) ROW(AINR_NRCORE_INPUT_4CH_12) ROW(AINR_NRCORE_INPUT_4CH_13) \
    ROW(AINR_NRCORE_INPUT_4CH_14) ROW(AINR_NRCORE_INPUT_4CH_15) ROW(AINR_NRCORE_INPUT_4CH_2) \
    ROW(AINR_NRCORE_INPUT_4CH_3) ROW(AINR_NRCORE_INPUT_4CH_4) ROW(AINR_NRCORE_INPUT_4CH_5) \
    ROW(AINR_NRCORE_INPUT_4CH_6) ROW(AINR_NRCORE_INPUT_4CH_7) ROW(AINR_NRCORE_INPUT_4CH_8) \
    ROW(AINR_NRCORE_INPUT_4CH_9) ROW(AINR_NRCORE_OUTPUT) ROW(AINR_TUNING_BIN) ROW(AINR_UPKO) \
    ROW(AINR_WPEI) ROW(AINR_WPEO) ROW(AinrOutput) ROW(AISA) ROW(AIShutter20_HDRCORE_CONFIG) \
    ROW(AIShutter20_HDRCORE_DLA_IN) ROW(AIShutter20_HDRCORE_DLA_OUT) \
    ROW(AIShutter20_HDRCORE_INPUT_4CH_0) ROW(AIShutter20_HDRCORE_INPUT_4CH_1) \
    ROW(AIShutter20_HDRCORE_INPUT_4CH_10) ROW(AIShutter20_HDRCORE_INPUT_4CH_11) \
    ROW(AIShutter20_HDRCORE_INPUT_4CH_12) ROW(AIShutter20_HDRCORE_INPUT_4CH_13) \
    ROW(AIShutter20_HDRCORE_INPUT_4CH_14) ROW(AIShutter20_HDRCORE_INPUT_4CH_15) \
    ROW(AIShutter20_HDRCORE_INPUT_4CH_2) ROW(AIShutter20_HDRCORE_INPUT_4CH_3) \
    ROW(AIShutter20_HDRCORE_INPUT_4CH_4) ROW(AIShutter20_HDRCORE_INPUT_4CH_5) \
    ROW(AIShutter20_HDRCORE_INPUT_4CH_6) ROW(AIShutter20_HDRCORE_INPUT_4CH_7) \
    ROW(AIShutter20_HDRCORE_INPUT_4CH_8) ROW(AIShutter20_HDRCORE_INPUT_4CH_9) \
    ROW(AIShutter20_HDRCORE_OUTPUT) ROW(AIShutter20_ImageSelection1_IN_aaho_hist_y_le_mstm) \
    ROW(AIShutter20_ImageSelection1_IN_AE_INFO) ROW(AIShutter20_ImageSelection1_IN_IMGSELInput_1) \
    ROW(AIShutter20_ImageSelection1_IN_NVRAM) ROW(AIShutter20_ImageSelection1_IN_STRUCTURE) \
    ROW(AIShutter20_ImageSelection1_IN_ZOOM_INFO) \
    ROW(AIShutter20_ImageSelection1_OUT_IMGSELOutput_1) \
    ROW(AIShutter20_ImageSelection1_OUT_SHRUCTURE) \
    ROW(AIShutter20_ImageSelection2_IN_aaho_hist_y_le_mstm) \
    ROW(AIShutter20_ImageSelection2_IN_AE_INFO) ROW(AIShutter20_ImageSelection2_IN_BSS_GROUP_INFO) \
    ROW(AIShutter20_ImageSelection2_IN_IMGSELInput_2) ROW(AIShutter20_ImageSelection2_IN_NVRAM) \
    ROW(AIShutter20_ImageSelection2_IN_ZOOM_INFO) \
    ROW(AIShutter20_ImageSelection2_OUT_IMGSELOutput_2) \
    ROW(AIShutter20_ImageSelection2_OUT_SHRUCTURE) ROW(AIShutter20_MODEL_NVRAM_OUT) \
    ROW(AIShutter20_MSTMCORE_IN_APPLY_RAWIN) ROW(AIShutter20_MSTMCORE_IN_BAYER) \
    ROW(AIShutter20_MSTMCORE_IN_FACEINFO) ROW(AIShutter20_MSTMCORE_IN_HDR_RATIO) \
    ROW(AIShutter20_MSTMCORE_IN_MSTMInput) ROW(AIShutter20_MSTMCORE_IN_NVRAM) \
    ROW(AIShutter20_MSTMCORE_IN_NVRAMTable1List) ROW(AIShutter20_MSTMCORE_IN_NVRAMTable2List) \
    ROW(AIShutter20_MSTMCORE_IN_NVRAMTable3List) ROW(AIShutter20_MSTMCORE_IN_NVRAMTable4List) \
    ROW(AIShutter20_MSTMCORE_IN_NVRAMTable5List) ROW(AIShutter20_MSTMCORE_OUT_APPLY_LTM) \
    ROW(AIShutter20_MSTMCORE_OUT_APPLY_RAWOUT) ROW(AIShutter20_MSTMCORE_OUT_APPLY_TNC_STRUCTURE) \
    ROW(AIShutter20_MSTMCORE_OUT_MSTMOutput) ROW(APU_TUNING) ROW(BSS_ACTS_STAT) ROW(BSS_DATAG) \
    ROW(BSS_FACES) ROW(BSS_FD_INFO) ROW(BSS_FD_MAIN) ROW(BSS_GM) ROW(BSS_IN) ROW(BSS_INFO) \
    ROW(BSS_OUT) ROW(BSS_PARA_BIN) ROW(BSS_PARAM) ROW(BSS_POS) ROW(BSS_TUNING) ROW(CAC) \
    ROW(CAMSV_IMGO) ROW(CONF_MAP) ROW(DBGBO_T1) ROW(DBGO_T1) ROW(DebugPort) ROW(DEPI) ROW(DHZAI) \
    ROW(DHZAO) ROW(DHZDI) ROW(DHZFEBI) ROW(DHZFEI) ROW(DHZGI) ROW(DHZGO) ROW(DHZPAI) ROW(DHZPGI) \
    ROW(DMGI) ROW(DPEI_IMG_M) ROW(DPEI_IMG_S) ROW(DPEI_MASK_M) ROW(DPEI_MASK_S) ROW(DRZS4NO_R3) \
    ROW(DVP_ASF_ARM) ROW(DVP_ASF_HF) ROW(DVP_ASF_R) ROW(DVP_DEPTH) ROW(DVS_CFM) ROW(DVS_DEPTH) \
    ROW(DVS_DV) ROW(FEFM_DEC_OUT) ROW(FEO) ROW(FEO_D1) ROW(FMB_L0) ROW(FMB_L1) ROW(FMB_L1_M0) \
    ROW(FMO) ROW(FPRI_R1) ROW(FST) ROW(FW_ME_TCY_O) ROW(FW_ME_TCY_P) ROW(FWDHZ_LEVEL) \
    ROW(FWDHZ_LEVEL_PREV) ROW(FWDHZ_MAP) ROW(FWDHZ_MAP_PREV) ROW(FWME_FW_FST) ROW(FWME_FW_FST_P) \
    ROW(FWME_HW_FST_1PASS) ROW(FWME_HW_FST_MD0) ROW(FWME_HW_FST_MD0_3PASS_0) \
    ROW(FWME_HW_FST_MD1_3PASS_0) ROW(FWME_MMG_FBFST) ROW(FWME_MMG_RST) ROW(FWME_TCY_FST) \
    ROW(FWME_WPE_FST) ROW(FWMM_FBFST) ROW(FWMM_GYRO_MV) ROW(FWMM_HW_FMB) ROW(FWMM_HW_FST) \
    ROW(FWMM_MIL) ROW(FWMM_RST) ROW(FWTNC_DHZ_BCE_CURV_F0) ROW(FWTNC_DHZ_BCE_CURV_SL) \
    ROW(FWTNC_DHZ_BCE_FD) ROW(FWTNC_DHZ_BCE_FLTCURV) ROW(FWTNC_DHZ_BCE_FLTCURV_PREV) \
    ROW(FWTNC_DHZ_CROP) ROW(FWTNC_DHZ_GGM_CURV) ROW(FWTNC_DHZ_GTM_AE) ROW(FWTNC_DHZ_GTM_CURV_PREV) \
    ROW(FWTNC_DHZ_IGGM_CURV) ROW(FWTNC_DHZ_LEVEL) ROW(FWTNC_DHZ_MAP) ROW(GF_BLUR) ROW(GF_BLUR_BOK) \
    ROW(GF_NVRAM) ROW(GF_RESULT_INFO) ROW(GridMap) ROW(GUIDE_IMG) ROW(GUIDE_IMG_C) \
    ROW(GUIDE_IMG_PRE_WPE) ROW(GUIDE_IMG_Y) ROW(HOMO_IN) ROW(HOMO_OUT) ROW(HOMO_PARA) ROW(IMG2BO) \
    ROW(IMG2O) ROW(IMG3BO) ROW(IMG3O) ROW(IMG4BO) ROW(IMG4O) ROW(IMGBI_D1) ROW(IMGBI_T1) \
    ROW(IMGCI_D1) ROW(IMGCI_T1) ROW(IMGDI_D1) ROW(IMGI_D1) ROW(IMGI_T1) ROW(IMGO) ROW(IMGO_E1) \
    ROW(IMGO_E2) ROW(IMGO_E3) ROW(IMGO_PROCESS) ROW(ISPINFO) ROW(JPG) ROW(LMI) ROW(LSC) \
    ROW(LSC_IN) ROW(LSC_OUT) ROW(LSC_OUTINFO) ROW(LTM_OUT) ROW(LTMSO) ROW(MEI_L0) ROW(MEI_L0_P) \
    ROW(MEI_L1) ROW(MEI_L1_P) ROW(META_P1) ROW(META_P2) ROW(MIL) ROW(MMAP_DS0_X) ROW(MMAP_DS0_Y) \
    ROW(MMAP_DS1_X) ROW(MMAP_DS1_Y) ROW(MMAP_DS2_X) ROW(MMAP_DS2_Y) ROW(MMAP_X) ROW(MMAP_Y) \
    ROW(MV_L0) ROW(MV_L0_M0) ROW(MV_L0_M1_P) ROW(MV_L0_M2_P) ROW(MV_L1) ROW(MV_L1_M0_P) \
    ROW(MV_L1_M2_P) ROW(MV_PACK) ROW(MV_PACK_M0) ROW(MV_PACK_M0_P) ROW(MV_PACK_M1_P) \
    ROW(MV_PACK_M2_P) ROW(N3D_INIT_INFO) ROW(N3D_LOG) ROW(N3D_NVRAM_IN) ROW(N3D_NVRAM_OUT) \
    ROW(N3D_PROC_INFO) ROW(P1_DEPTH) ROW(P1_FE) ROW(PIMGBI_P1) ROW(PIMGCI_P1) ROW(PIMGI_P1) \
    ROW(POST_SW) ROW(PS_MAP_X) ROW(PS_MAP_Y) ROW(RAWI_R2) ROW(RECBI_D1) ROW(RECBI_D2) ROW(RECI_D1) \
    ROW(RECI_D2) ROW(REG_DHZE) ROW(REG_DIP) ROW(REG_LTRAW) ROW(REG_ME) ROW(REG_P1) \
    ROW(REG_PQDIP_A) ROW(REG_PQDIP_B) ROW(REG_TRAW) ROW(REG_WPE) ROW(REG_WPEC) ROW(REG_WPET) \
    ROW(REG_XTRAW) ROW(RZH1N2TBO_R1) ROW(RZH1N2TBO_R3) ROW(RZH1N2TO_R1) ROW(RZH1N2TO_R2) \
    ROW(RZH1N2TO_R3) ROW(SHAD_CAL_INFO) ROW(SKIP) ROW(SNR_FACE_INFO) ROW(stereo_tuning) \
    ROW(STT_PACK) ROW(STT_PACK_M0) ROW(SWME_CONF_MAP) ROW(SWME_GMV_IN) ROW(SWME_IN) \
    ROW(SWME_IN_BASE) ROW(SWME_IN_REF) ROW(SWME_OUT) ROW(SWME_PARA_BIN) ROW(SWME_PARAM) \
    ROW(SWME_TUNING) ROW(SWME_WPE_X_MAP) ROW(SWME_WPE_Y_MAP) ROW(SWME_WPEX_MAP) ROW(SWME_WPEY_MAP) \
    ROW(TCCSI_P1) ROW(TCCSO_P1) ROW(TIMGO) ROW(TIMGO_T1) ROW(TNC_OUT) ROW(TNCBO_D1) ROW(TNCO_D1) \
    ROW(TNCSBO_D1) ROW(TNCSBO_T1) ROW(TNCSHO_D1) ROW(TNCSHO_T1) ROW(TNCSO_D1) ROW(TNCSO_T1) \
    ROW(TNCSYO_D1) ROW(TNCSYO_R1) ROW(TNCSYO_T1) ROW(TNRCI) ROW(TNRLI) ROW(TNRMI) ROW(TNRMO) \
    ROW(TNRSI) ROW(TNRSO) ROW(TNRVBI) ROW(TNRWI) ROW(TNRWO) ROW(TSFDBG_R1) ROW(TSFDBG_R2) \
    ROW(TSFSO_R1) ROW(TSFSO_R2) ROW(UFDI_T1) ROW(UnpackChannel) ROW(VIPBI) ROW(VIPI) \
    ROW(WARP_RSZ_X_IN) ROW(WARP_RSZ_X_OUT) ROW(WARP_RSZ_Y_IN) ROW(WARP_RSZ_Y_OUT) ROW(WDMAO) \
    ROW(WPE_MAP_RZ_X_IN) ROW(WPE_MAP_RZ_X_OUT) ROW(WPE_MAP_RZ_Y_IN) ROW(WPE_MAP_RZ_Y_OUT) \
    ROW(WPE_MAP_X) ROW(WPE_MAP_Y) ROW(WPE_MASK) ROW(WPEC_MAP_X) ROW(WPEC_MAP_Y) ROW(WPEC_MASK) \
    ROW(WPECI) ROW(WPECO) ROW(WPEI) ROW(WPEO) ROW(WPET_MAP_X) ROW(WPET_MAP_Y) ROW(WPET_MASK) \
    ROW(WPETI) ROW(WPETO) ROW(WROTO) ROW(XTFDBO) ROW(XTFDO) ROW(XTMEO) ROW(YUVBO_R1) ROW(YUVBO_R2) \
    ROW(YUVBO_R3) ROW(YUVBO_R4) ROW(YUVBO_R5) ROW(YUVBO_T1) ROW(YUVBO_T2) ROW(YUVBO_T3) \
    ROW(YUVBO_T4) ROW(YUVCO_R1) ROW(YUVO_R1) ROW(YUVO_R2) ROW(YUVO_R3) ROW(YUVO_R4) ROW(YUVO_R5) \
    ROW(YUVO_T1) ROW(YUVO_T2) ROW(YUVO_T3) ROW(YUVO_T4) ROW(YUVO_T5) ROW(FWTNC_DHZ_GTM_STR_TBL) \
    ROW(FWTNC_DHZ_GTM_FACE_PARA) ROW(FSC_OUT) ROW(VAINR_AUXI_IN_DATA) ROW(VAINR_AUXI_OUT_DATA) \
    ROW(VAINR_PROC_IN_AUXI) ROW(VAINR_PROC_IN_FRC) ROW(VAINR_PROC_IN_CURRENT_G) \
    ROW(VAINR_PROC_IN_CURRENT_R) ROW(VAINR_PROC_IN_CURRENT_B) ROW(VAINR_PROC_IN_PREVIOUS_G) \
    ROW(VAINR_PROC_IN_PREVIOUS_RB) ROW(VAINR_PROC_OUT_FRC) ROW(VAINR_PROC_OUT_RNN_G) \
    ROW(VAINR_PROC_OUT_RNN_RB) ROW(VAINR_PROC_OUT_ISP_G) ROW(VAINR_PROC_OUT_ISP_R) \
    ROW(VAINR_PROC_OUT_ISP_B) ROW(VAINR_APU_NVRAM) ROW(VAINR_SYS_NVRAM) ROW(VAINR_WRK_MDLA_G) \
    ROW(VAINR_WRK_MDLA_RBA) ROW(VAINR_WRK_IN_FRC) ROW(VAINR_WRK_OUT_FRC) ROW(VAINR_WRK_ALPHA) \
    ROW(VAINR_WRK_RESIDUAL) ROW(VAINR_PARAM_INITINFO) ROW(VAINR_PARAM_WRKBUFINFO) \
    ROW(VAINR_PARAM_DETAILEXTBUFINFO) ROW(VAINR_PARAM_AUXIINPUT) ROW(VAINR_PARAM_AUXIOUTPUT) \
    ROW(VAINR_PARAM_PROCESSINPUT) ROW(VAINR_PARAM_PROCESSOUTPUT) ROW(VAINR_PARAM_WPEQUERYIN) \
    ROW(VAINR_PARAM_WPEROIINFO) ROW(VAINR_PARAM_WRK_MDLA_G) ROW(VAINR_PARAM_WRK_MDLA_RBA) \
    ROW(VAINR_PARAM_WRK_IN_FRC) ROW(VAINR_PARAM_WRK_OUT_FRC) ROW(VAINR_PARAM_WRK_ALPHA) \
    ROW(VAINR_PARAM_WRK_RESIDUAL)

#define CAMTUNE_NDD_SENSOR_ID_ROWS(ROW) \
    ROW(main) ROW(sub) ROW(main2) ROW(sub2) ROW(main3) ROW(sub3) ROW(main4) ROW(sub4) \
    ROW(main5) ROW(sub5) ROW(main6) ROW(sub6)

#define CAMTUNE_NDD_SENSOR_FEATURE_MODE_ROWS(ROW) \
    ROW(Off) ROW(mHDR) ROW(ms_2exp_se_ne) ROW(ms_2exp_ne_se) ROW(stg_2exp_ne_se) \
    ROW(stg_3exp_ne_me_se) ROW(rcfg_1exp_ne) ROW(dcg_2exp_dcg12) ROW(dcg_2exp_dcg14) \
    ROW(dcg_2exp_hcg_lcg) ROW(dcg_3exp_dcg12_sge) ROW(dcg_3exp_dcg14_sge) \
    ROW(dcg_3exp_sge_dcg12) ROW(dcg_3exp_sge_dcg14) ROW(dcg_3exp_hcg_lcg_sge) \
    ROW(dcg_3exp_sge_hcg_lcg) ROW(fc_2exp_quad) ROW(fc_3exp_quad) ROW(fmtfc_2exp_ne_se) \
    ROW(fmtfc_3exp_ne_me_se) ROW(qdol4_4exp_mqd12_mqd12) ROW(qdol4_4exp_mqd14_mqd14) \
    ROW(qdol4_3exp_ne_mqd12) ROW(qdol4_3exp_ne_mqd14) ROW(qdol4_3exp_mqd12_se) \
    ROW(qdol4_3exp_mqd14_se) ROW(fc_2exp_mqd12) ROW(fc_2exp_mqd14)

#define CAMTUNE_NDD_SENSOR_EXP_ROWS(ROW) \
    ROW(NorExp) ROW(ShtExp) ROW(MidExp) ROW(NorExp_ShtExp) ROW(NorExp_MidExp_ShtExp) \
    ROW(MidExp_ShtExp)

#define CAMTUNE_NDD_EXP_ODR_ROWS(ROW) ROW(E1) ROW(E2) ROW(E3) ROW(E1_E2) ROW(E2_E3) ROW(E1_E2_E3)

#define CAMTUNE_NDD_DUAL_CAM_ID_ROWS(ROW) ROW(Master) ROW(Slave)
// clang-format on

namespace NSCam {
class IImageBuffer;
class IMetadata;
}  // namespace NSCam

namespace NSCam {
namespace TuningUtils {

#define CAMTUNE_NDD_ENUM_ROW(prefix, row) prefix##_##row,
#define CAMTUNE_NDD_CATEGORY_ENUM(row) CAMTUNE_NDD_ENUM_ROW(eCategory, row)
#define CAMTUNE_NDD_MODULE_ENUM(row) CAMTUNE_NDD_ENUM_ROW(eModule, row)
#define CAMTUNE_NDD_SENSOR_ID_ENUM(row) CAMTUNE_NDD_ENUM_ROW(eSensorId, row)
#define CAMTUNE_NDD_SENSOR_FEATURE_MODE_ENUM(row) CAMTUNE_NDD_ENUM_ROW(eSensorFeatureMode, row)
#define CAMTUNE_NDD_SENSOR_EXP_ENUM(row) CAMTUNE_NDD_ENUM_ROW(eSensorExp, row)
#define CAMTUNE_NDD_EXP_ODR_ENUM(row) CAMTUNE_NDD_ENUM_ROW(eExpOdr, row)
#define CAMTUNE_NDD_DUAL_CAM_ID_ENUM(row) CAMTUNE_NDD_ENUM_ROW(eDualCamId, row)

// Kind of request an item belongs to.
enum eCategory : int32_t { CAMTUNE_NDD_CATEGORY_ROWS(CAMTUNE_NDD_CATEGORY_ENUM) eCategory_NUM };

// Dumped buffer or table (the module), 0 "AAHO" to 449 "VAINR_PARAM_WRK_RESIDUAL".
enum eModule : int32_t { CAMTUNE_NDD_MODULE_ROWS(CAMTUNE_NDD_MODULE_ENUM) eModule_NUM };

enum eSensorId : int32_t {
    eSensorId_None = -1,
    CAMTUNE_NDD_SENSOR_ID_ROWS(CAMTUNE_NDD_SENSOR_ID_ENUM) eSensorId_NUM
};

// The optional fields below use -1 for "none": their naming rules then add nothing.
enum eSensorFeatureMode : int32_t {
    eSensorFeatureMode_None = -1,
    CAMTUNE_NDD_SENSOR_FEATURE_MODE_ROWS(CAMTUNE_NDD_SENSOR_FEATURE_MODE_ENUM)
            eSensorFeatureMode_NUM
};

enum eSensorExp : int32_t {
    eSensorExp_None = -1,
    CAMTUNE_NDD_SENSOR_EXP_ROWS(CAMTUNE_NDD_SENSOR_EXP_ENUM) eSensorExp_NUM
};

enum eExpOdr : int32_t {
    eExpOdr_None = -1,
    CAMTUNE_NDD_EXP_ODR_ROWS(CAMTUNE_NDD_EXP_ODR_ENUM) eExpOdr_NUM
};

enum eDualCamId : int32_t {
    eDualCamId_None = -1,
    CAMTUNE_NDD_DUAL_CAM_ID_ROWS(CAMTUNE_NDD_DUAL_CAM_ID_ENUM) eDualCamId_NUM
};

#undef CAMTUNE_NDD_ENUM_ROW
#undef CAMTUNE_NDD_CATEGORY_ENUM
#undef CAMTUNE_NDD_MODULE_ENUM
#undef CAMTUNE_NDD_SENSOR_ID_ENUM
#undef CAMTUNE_NDD_SENSOR_FEATURE_MODE_ENUM
#undef CAMTUNE_NDD_SENSOR_EXP_ENUM
#undef CAMTUNE_NDD_EXP_ODR_ENUM
#undef CAMTUNE_NDD_DUAL_CAM_ID_ENUM

// Description of one dumped item. The naming rules read these fields to build file names.
struct NddData {
    int32_t version = 0;    // platform number; "-p%d" in file names
    int32_t uniqueKey = 0;  // stream unique key, printed with 9 digits
    int32_t requestNo = 0;  // printed with 4 digits, modulo 10000
    int32_t frameNo = 0;    // printed with 4 digits, modulo 10000
    int32_t sensorId = 0;   // eSensorId
    int32_t stage = 0;      // index of the vocabulary's stage names
    int32_t feature = 0;    // index of the vocabulary's feature-pipe scenario names
    int32_t action = 0;
    int32_t sensorFeatureMode = eSensorFeatureMode_None;
    std::string userStr;       // free text appended to file names
    int32_t paddedWidth = 0;   // "PW"
    int32_t paddedHeight = 0;  // "PH"
    int32_t bufferWidth = 0;   // "BW", the stride
    int32_t width = 0;
    int32_t height = 0;
    int32_t bitDepth = 0;
    int32_t bayerOrder = 0;
    int32_t sign = 0;
    int32_t cell = 0;
    int32_t delay = 0;
    int32_t layer = 0;
    int32_t sensorExp = eSensorExp_None;
    int32_t expOdr = eExpOdr_None;
    int32_t dualCamId = eDualCamId_None;
    int32_t ruleVersion = 0;  // version of the naming rule; "-v%d" in file names
};

// Value query_ndd_info puts in NddData::version.
constexpr int32_t kNddDataVersion = 6983;

// Metadata tags NDD reads and writes.
enum NddMetaTag : uint32_t {
    kNddTagPipelineUniqueKey = 0xC00A0000u,  // int32, set by the pipeline
    kNddTagPipelineFrameNo = 0xC00A0001u,    // int32, set by the pipeline
    kNddTagPipelineRequestNo = 0xC00A0002u,  // int32, set by the pipeline
    kNddTagCaptureInfo = 0xC0120000u,        // int64: lower 32 bits the feature; capture only
    kNddTagStreamingFeature = 0xC0120001u,   // int32
    kNddTagKey = 0xC0120003u,                // int64 NDD key
    kNddTagAction = 0xC0120004u,             // int32
    kNddTagCarriedFirst = 0xC0120007u,       // byte arrays of carried buffers, one per module
    kNddTagCarriedLast = 0xC012000Fu,
};

// The NDD key: unique key in the upper 32 bits, request number in bits 16 to 31, frame number in
// bits 0 to 15. The lower word is sign-extended, so a request number with bit 15 set fills the
// upper word with ones and hides the unique key; that is the key's defined value.
constexpr int64_t composeNddKey(int32_t uniqueKey, int32_t requestNo, int32_t frameNo) {
    const uint32_t low =
            (static_cast<uint32_t>(requestNo) << 16) | (static_cast<uint32_t>(frameNo) & 0xFFFFu);
    const int64_t lowExtended = static_cast<int32_t>(low);
    return static_cast<int64_t>(static_cast<uint64_t>(static_cast<uint32_t>(uniqueKey)) << 32 |
                                static_cast<uint64_t>(lowExtended));
}

// Platform image-format code and raw output point that force_buffer_format chooses.
struct NddFormat {
    int32_t format;
    int32_t selector;
};

// Size of the buffer query_file_path writes into, terminator included.
constexpr size_t kNddPathMax = 1024;

// The dump framework. Every operation may be called from any pipeline thread. While NDD is
// disabled (vendor.debug.ndd.thdnum 0, or before init) every item is refused at the cost of one
// flag test.
class INdd {
public:
    // The process-wide instance; it lives until the process ends.
    static INdd* getInstance();

    // Start of a stream: permits its sensors, reads the settings and the configuration file.
    virtual void stream_on(std::vector<int> sensorIds, unsigned int uniqueKey) = 0;
    // End of a stream: forgets every sensor, frame counter and the configuration.
    virtual void stream_off(std::vector<int> sensorIds) = 0;
    // Per frame of a sensor: takes permission changes and admits streaming frames.
    virtual void frame_begin(int sensorId, int frameNo) = 0;
    virtual void frame_end(int sensorId, int frameNo) = 0;
    // Names the file of an admitted item into `out` (kNddPathMax bytes) without writing it;
    // false (and `out` untouched) when the item is refused or has no usable name.
    virtual bool query_file_path(eCategory category, eModule module, NddData& data, char* out,
                                 const char* file, int line) = 0;
    // Dumps `size` bytes of `buffer` when the item is admitted. The bytes are copied before the
    // call returns, or written at once.
    virtual void submit_request(eCategory category, eModule module, NddData& data,
                                const void* buffer, int size, const char* file, int line) = 0;
    // Dumps the planes of `image` when the item is admitted; the geometry fields of `data` are
    // filled from the image. The planes are copied before the call returns.
    virtual void submit_request(eCategory category, eModule module, NddData& data,
                                IImageBuffer* image, const char* file, int line) = 0;
    // Number of writer threads; 0 when NDD is disabled.
    virtual int is_enable_ndd() = 0;
    // Whether the configuration enables the item (no permission checks).
    virtual bool is_enable_dump(const NddData& data, eCategory category, eModule module) = 0;
    // Reports an admitted item that the caller will not submit.
    virtual void notify_disable(NddData data, eCategory category, eModule module) = 0;
    // Writes into `out` the key of `in` with the frame number of `out`; -1 when either has none.
    virtual int align_uniquekey(const IMetadata& in, IMetadata& out) = 0;
    // Writes the key into `meta`; returns 0.
    virtual int update_uniquekey(IMetadata& meta, int uniqueKey, int requestNo, int frameNo) = 0;
    // Reads the key of `meta` (the NDD key, else the pipeline tags); 0, or -1 when not found.
    virtual int query_uniquekey(const IMetadata& meta, int& uniqueKey, int& requestNo,
                                int& frameNo) = 0;
    // Decodes an NDD key; returns 0.
    virtual int query_uniquekey(long long key, int& uniqueKey, int& requestNo, int& frameNo) = 0;
    // Fills the key, version, feature and action of `data` and the category from `meta`;
    // returns what the metadata key query returned.
    virtual int query_ndd_info(const IMetadata& meta, eCategory& category, NddData& data) = 0;
    // Applies the raw-format override properties; true when one of them chose the format.
    virtual bool force_buffer_format(NddFormat& format) = 0;
    // Appends a frame order to the sensor's on-device tuning dump-in file.
    virtual void force_frame_order(int sensorId, std::vector<unsigned int> order) = 0;
    // Carries a small buffer (of the statistics modules that have a carriage tag) in `meta`, to
    // be dumped later by dump_buffer under the identity of the request that carries it. The
    // carriage is an in-process handover.
    virtual void push_buffer(eCategory category, eModule module, NddData& data, void* buffer,
                             int size, IMetadata& meta, const char* file, int line) = 0;
    // Submits every buffer carried in `meta`, named after `meta`'s request.
    virtual void dump_buffer(const IMetadata& meta) = 0;
    virtual ~INdd() = default;
};

class NddInitializerImp;

// Starts NDD (init) for as long as it lives; its destruction stops NDD (uninit), which first
// writes every queued item. Usually a static object of the client.
class NddInitializer {
public:
    NddInitializer();
    ~NddInitializer();
    NddInitializer(const NddInitializer&) = delete;
    NddInitializer& operator=(const NddInitializer&) = delete;

private:
    std::unique_ptr<NddInitializerImp> mImp;
};

}  // namespace TuningUtils
}  // namespace NSCam

CAMTUNE_EXPORT_END
