// The naming vocabulary: readable names for the pipeline's scenario, application, size, capture
// type, frame-rate, flash, sensor and processing-stage codes.
//
// Each vocabulary comes in three forms built from one row list, so they cannot drift apart:
//   - an enumeration indexing it (`NAMING_STAGE_P2_Single`), ending in a `..._NUM` count;
//   - `NAMING_X_CSTR`: a constant `const char*` array, usable before static initialisation;
//   - `NAMING_X`: a `const std::string` array with the same rows, for code that wants strings.
//     It has internal linkage: every including file owns a private copy, built by that file's
//     static initialisation, so a file's own static initialisers may use it safely.
// Equal rows in different arrays are independent strings. The file-name rules do not read these
// arrays; they spell their elements themselves.
#pragma once

#include <cstdint>
#include <string>

#include "camtune/export.h"

CAMTUNE_EXPORT_BEGIN

#define CAMTUNE_NAMING_ENUM_ROW(array, row) array##_##row,
#define CAMTUNE_NAMING_TEXT_ROW(array, row) #row,
#define CAMTUNE_NAMING_ARRAY(Type, array, ROWS)                               \
    enum Type : int32_t { ROWS(CAMTUNE_NAMING_ENUM_ROW, array) array##_NUM }; \
    inline constexpr const char* array##_CSTR[array##_NUM] = {                \
            ROWS(CAMTUNE_NAMING_TEXT_ROW, array)};                            \
    static const std::string array[array##_NUM] = {ROWS(CAMTUNE_NAMING_TEXT_ROW, array)};

// Row lists are in index order; appending is safe, reordering renumbers the enumeration.
// clang-format off

// Top-level scenario.
#define CAMTUNE_NAMING_SCENARIO_ROWS(ROW, array) \
    ROW(array, Preview) ROW(array, Video) ROW(array, Capture)
CAMTUNE_NAMING_ARRAY(NamingScenario, NAMING_SCENARIO, CAMTUNE_NAMING_SCENARIO_ROWS)

// Camera application or mode that issued the request.
#define CAMTUNE_NAMING_APP_TYPE_ROWS(ROW, array) \
    ROW(array, Platform_Camera) ROW(array, Device_Camera) ROW(array, Normal) \
    ROW(array, 3rd_party) ROW(array, Chat_App) ROW(array, Video_Call_App) \
    ROW(array, Social_Feed_App) ROW(array, Short_Video_App) ROW(array, Live_Stream_App) \
    ROW(array, Scanner_App) ROW(array, Meeting_App) ROW(array, Browser_App) \
    ROW(array, Payment_App) ROW(array, Map_App) ROW(array, Portrait) ROW(array, Night) \
    ROW(array, Pro) ROW(array, Panorama) ROW(array, Slow_Motion) ROW(array, Time_Lapse) \
    ROW(array, Macro) ROW(array, Document) ROW(array, Food) ROW(array, Super_Zoom) \
    ROW(array, Moon) ROW(array, Starry_Sky) ROW(array, Light_Painting) ROW(array, Long_Exposure) \
    ROW(array, Burst) ROW(array, Dual_View) ROW(array, Beauty) ROW(array, Sticker) \
    ROW(array, Cinematic) ROW(array, Hi_Res) ROW(array, Sport) ROW(array, Underwater) \
    ROW(array, Factory_Test) ROW(array, Engineer_Mode) ROW(array, Tuning_Mode) \
    ROW(array, Stress_Test) ROW(array, Camera_ITS) ROW(array, Camera_VTS) ROW(array, HDR) \
    ROW(array, CTS) ROW(array, LOG)
CAMTUNE_NAMING_ARRAY(NamingAppType, NAMING_APP_TYPE, CAMTUNE_NAMING_APP_TYPE_ROWS)

// Video size class.
#define CAMTUNE_NAMING_SIZE_CLASS_ROWS(ROW, array) \
    ROW(array, SIZE_4K) ROW(array, SIZE_WQHD) ROW(array, SIZE_FHD) ROW(array, SIZE_HD) \
    ROW(array, SIZE_8K)
CAMTUNE_NAMING_ARRAY(NamingSizeClass, NAMING_SIZE_CLASS, CAMTUNE_NAMING_SIZE_CLASS_ROWS)

// Camera module.
#define CAMTUNE_NAMING_CAMERA_MODULE_ROWS(ROW, array) \
    ROW(array, CameraModule_00)
CAMTUNE_NAMING_ARRAY(NamingCameraModule, NAMING_CAMERA_MODULE, CAMTUNE_NAMING_CAMERA_MODULE_ROWS)

// Custom index.
#define CAMTUNE_NAMING_CUSTOM_ROWS(ROW, array) \
    ROW(array, Custom_00) ROW(array, Custom_01) ROW(array, Custom_02) ROW(array, Custom_03) \
    ROW(array, Custom_04) ROW(array, Custom_05) ROW(array, Custom_06) ROW(array, Custom_07) \
    ROW(array, Custom_08) ROW(array, Custom_09)
CAMTUNE_NAMING_ARRAY(NamingCustom, NAMING_CUSTOM, CAMTUNE_NAMING_CUSTOM_ROWS)

// Capture feature type.
#define CAMTUNE_NAMING_CAPTURE_TYPE_ROWS(ROW, array) \
    ROW(array, OFF) ROW(array, Capture_Single) ROW(array, Capture_LPNR) \
    ROW(array, Capture_YUV_HDR) ROW(array, Capture_YUV_LLHDR) ROW(array, Capture_LLHDR) \
    ROW(array, Capture_LLHDR_AINR) ROW(array, Capture_FastNight) ROW(array, Capture_SuperNight) \
    ROW(array, Capture_RAWNR) ROW(array, Capture_RAWNR_AINR) \
    ROW(array, Capture_RAWHDR30_SuperNight) ROW(array, Capture_RAWHDR25P_SuperNight) \
    ROW(array, Capture_RAWHDR25P_HDR) ROW(array, Capture_RAWHDR25P_HDR_AINR) \
    ROW(array, Capture_RAWHDR25P_HDR_Motion) ROW(array, Capture_RAWHDR25P_LLHDR) \
    ROW(array, Capture_RAWHDR25P_LLHDR_AINR) ROW(array, Capture_RAWHDR25P_HDRLite) \
    ROW(array, Capture_RAWHDR25P_HDRLite_AINR) ROW(array, Capture_RAWHDR25P_FastNight) \
    ROW(array, Capture_RAWHDR25P_HDROFF) ROW(array, Capture_RAWHDR25P_HDROFF_AINR) \
    ROW(array, Capture_Sport) ROW(array, Capture_Sport_AINR) ROW(array, Capture_HDR_Sport) \
    ROW(array, Capture_HDR_Sport_AINR) ROW(array, Capture_Sport_Burst) \
    ROW(array, Capture_ZoomNR) ROW(array, Capture_AISR) ROW(array, Capture_PShift) \
    ROW(array, Capture_SuperMoon) ROW(array, Capture_Star) ROW(array, Capture_SlowShutter) \
    ROW(array, Capture_SHDR) ROW(array, Capture_AISR_LLS) ROW(array, Capture_PShift_LLS) \
    ROW(array, Capture_Test3) ROW(array, Capture_Test4) ROW(array, Capture_Test5) \
    ROW(array, Capture_Test6) ROW(array, Preview_IC) ROW(array, Video_IC_24FPS) \
    ROW(array, Video_IC_30FPS) ROW(array, Video_IC_60FPS) ROW(array, Video_VHDR) \
    ROW(array, Video_chroma) ROW(array, Capture_MFAINR) ROW(array, Capture_RAWNR_SUB)
CAMTUNE_NAMING_ARRAY(NamingCaptureType, NAMING_CAPTURE_TYPE, CAMTUNE_NAMING_CAPTURE_TYPE_ROWS)

// Frame rate.
#define CAMTUNE_NAMING_FPS_ROWS(ROW, array) \
    ROW(array, FPS_30) ROW(array, FPS_60) ROW(array, FPS_90) ROW(array, FPS_120) \
    ROW(array, FPS_240) ROW(array, FPS_480) ROW(array, FPS_720) ROW(array, FPS_24)
CAMTUNE_NAMING_ARRAY(NamingFps, NAMING_FPS, CAMTUNE_NAMING_FPS_ROWS)

// Feature-pipe scenario of preview, video and capture.
#define CAMTUNE_NAMING_PIPE_SCENARIO_ROWS(ROW, array) \
    ROW(array, Preview) ROW(array, Preview_eis) ROW(array, Preview_vhdr) \
    ROW(array, Preview_e2ehdr) ROW(array, Preview_eis_vhdr) ROW(array, Preview_vhdr_e2ehdr) \
    ROW(array, Preview_eis_vhdr_e2ehdr) ROW(array, Preview_vsdof_bayerbayer) \
    ROW(array, Preview_vsdof_bayermono) ROW(array, Preview_vsdof_eis_bayerbayer) \
    ROW(array, Preview_vsdof_eis_bayermono) ROW(array, Video) ROW(array, Video_eis) \
    ROW(array, Video_vhdr) ROW(array, Video_e2ehdr) ROW(array, Video_eis_vhdr) \
    ROW(array, Video_vhdr_e2ehdr) ROW(array, Video_eis_vhdr_e2ehdr) \
    ROW(array, Video_vsdof_bayerbayer) ROW(array, Video_vsdof_bayermono) \
    ROW(array, Video_vsdof_eis_bayerbayer) ROW(array, Video_vsdof_eis_bayermono) \
    ROW(array, Capture_default) ROW(array, Capture_simple) ROW(array, Capture_cshot) \
    ROW(array, Capture_cshot_lpnr) ROW(array, Capture_single_nr) ROW(array, Capture_remosaic) \
    ROW(array, Capture_lpnr) ROW(array, Capture_mfnr) ROW(array, Capture_remosaic_mfnr) \
    ROW(array, Capture_ainr) ROW(array, Capture_ainr_single_nr) ROW(array, Capture_aihdr) \
    ROW(array, Capture_aihdr_single_nr) ROW(array, Capture_yuv_reprocessing_default) \
    ROW(array, Capture_yuv_reprocessing_with_single_nr) \
    ROW(array, Capture_yuv_encode_jpeg_default) \
    ROW(array, Capture_yuv_encode_jpeg_with_single_nr) ROW(array, Capture_remosaic_single_nr) \
    ROW(array, Capture_mfnr_single_nr) ROW(array, Capture_remosaic_mfnr_single_nr) \
    ROW(array, Capture_ainr14b_lpnr) ROW(array, Capture_ainr16b_lpnr) \
    ROW(array, Capture_aihdr16b_lpnr) ROW(array, NDD_default) ROW(array, Capture_aishutter1) \
    ROW(array, Capture_aishutter2) ROW(array, Video_ainr_vhdr) ROW(array, Video_ainr) \
    ROW(array, Video_ainr_vhdr_freerun) ROW(array, Video_ainr_freerun) ROW(array, AOV)
CAMTUNE_NAMING_ARRAY(NamingPipeScenario, NAMING_PIPE_SCENARIO, CAMTUNE_NAMING_PIPE_SCENARIO_ROWS)

// Flash state.
#define CAMTUNE_NAMING_FLASH_ROWS(ROW, array) \
    ROW(array, No) ROW(array, MainFlash) ROW(array, PreFlash) ROW(array, Torch)
CAMTUNE_NAMING_ARRAY(NamingFlash, NAMING_FLASH, CAMTUNE_NAMING_FLASH_ROWS)

// Flash by side, colour-temperature channel and part.
#define CAMTUNE_NAMING_FLASH_TYPE_ROWS(ROW, array) \
    ROW(array, FLASH_TYPE_REAR_CT_0_PART_0) ROW(array, FLASH_TYPE_REAR_CT_1_PART_0) \
    ROW(array, FLASH_TYPE_FRONT_CT_0_PART_0) ROW(array, FLASH_TYPE_FRONT_CT_1_PART_0) \
    ROW(array, FLASH_TYPE_REAR_CT_0_PART_1) ROW(array, FLASH_TYPE_REAR_CT_1_PART_1) \
    ROW(array, FLASH_TYPE_FRONT_CT_0_PART_1) ROW(array, FLASH_TYPE_FRONT_CT_1_PART_1)
CAMTUNE_NAMING_ARRAY(NamingFlashType, NAMING_FLASH_TYPE, CAMTUNE_NAMING_FLASH_TYPE_ROWS)

// Latency mode.
#define CAMTUNE_NAMING_LATENCY_ROWS(ROW, array) \
    ROW(array, LATENCY_DEFAULT) ROW(array, LATENCY_LOW)
CAMTUNE_NAMING_ARRAY(NamingLatency, NAMING_LATENCY, CAMTUNE_NAMING_LATENCY_ROWS)

// Project.
#define CAMTUNE_NAMING_PROJECT_ROWS(ROW, array) \
    ROW(array, Project_00)
CAMTUNE_NAMING_ARRAY(NamingProject, NAMING_PROJECT, CAMTUNE_NAMING_PROJECT_ROWS)

// Sensor identity.
#define CAMTUNE_NAMING_SENSOR_ID_ROWS(ROW, array) \
    ROW(array, Default) ROW(array, RW50A_SENSOR_ID) ROW(array, WD13B_SENSOR_ID) \
    ROW(array, TL08C_SENSOR_ID) ROW(array, FR32D_SENSOR_ID) ROW(array, MC02E_SENSOR_ID)
CAMTUNE_NAMING_ARRAY(NamingSensorId, NAMING_SENSOR_ID, CAMTUNE_NAMING_SENSOR_ID_ROWS)

// Sensor HDR exposure mode.
#define CAMTUNE_NAMING_SENSOR_HDR_ROWS(ROW, array) \
    ROW(array, OFF) ROW(array, mHDR) ROW(array, ms_2exp_se_ne) ROW(array, stg_2exp_ne_se) \
    ROW(array, stg_3exp_ne_me_se) ROW(array, fc_2exp_quad) ROW(array, fc_3exp_quad) \
    ROW(array, fmtfc_2exp_ne_se) ROW(array, fmtfc_3exp_ne_me_se) ROW(array, rcfg_1exp_ne) \
    ROW(array, ms_2exp_ne_se) ROW(array, dcg_2exp_dcg12) ROW(array, dcg_2exp_dcg14) \
    ROW(array, dcg_2exp_hcg_lcg) ROW(array, dcg_3exp_dcg12_sge) ROW(array, dcg_3exp_dcg14_sge) \
    ROW(array, dcg_3exp_sge_dcg12) ROW(array, dcg_3exp_sge_dcg14) \
    ROW(array, dcg_3exp_hcg_lcg_sge) ROW(array, dcg_3exp_sge_hcg_lcg) \
    ROW(array, qdol4_4exp_mqd12_mqd12) ROW(array, qdol4_4exp_mqd14_mqd14) \
    ROW(array, qdol4_3exp_ne_mqd12) ROW(array, qdol4_3exp_ne_mqd14) \
    ROW(array, qdol4_3exp_mqd12_se) ROW(array, qdol4_3exp_mqd14_se) ROW(array, fc_2exp_mqd12) \
    ROW(array, fc_2exp_mqd14)
CAMTUNE_NAMING_ARRAY(NamingSensorHdr, NAMING_SENSOR_HDR, CAMTUNE_NAMING_SENSOR_HDR_ROWS)

// Sensor mode.
#define CAMTUNE_NAMING_SENSOR_MODE_ROWS(ROW, array) \
    ROW(array, Preview) ROW(array, Capture) ROW(array, Video) ROW(array, SlimVideo1) \
    ROW(array, SlimVideo2) ROW(array, Custom1) ROW(array, Custom2) ROW(array, Custom3) \
    ROW(array, Custom4) ROW(array, Custom5) ROW(array, Custom6) ROW(array, Custom7) \
    ROW(array, Custom8) ROW(array, Custom9) ROW(array, Custom10) ROW(array, Custom11) \
    ROW(array, Custom12) ROW(array, Custom13) ROW(array, Custom14) ROW(array, Custom15) \
    ROW(array, Custom16) ROW(array, Custom17) ROW(array, Custom18) ROW(array, Custom19) \
    ROW(array, Custom20) ROW(array, Custom21) ROW(array, Custom22) ROW(array, Custom23) \
    ROW(array, Custom24) ROW(array, Custom25) ROW(array, Custom26) ROW(array, Custom27) \
    ROW(array, Custom28) ROW(array, Custom29) ROW(array, Custom30)
CAMTUNE_NAMING_ARRAY(NamingSensorMode, NAMING_SENSOR_MODE, CAMTUNE_NAMING_SENSOR_MODE_ROWS)

// Video dynamic range.
#define CAMTUNE_NAMING_DYNAMIC_RANGE_ROWS(ROW, array) \
    ROW(array, Conventional) ROW(array, HDR10P)
CAMTUNE_NAMING_ARRAY(NamingDynamicRange, NAMING_DYNAMIC_RANGE, CAMTUNE_NAMING_DYNAMIC_RANGE_ROWS)

// Size index.
#define CAMTUNE_NAMING_SIZE_INDEX_ROWS(ROW, array) \
    ROW(array, SIZE_00) ROW(array, SIZE_01) ROW(array, SIZE_02) ROW(array, SIZE_03) \
    ROW(array, SIZE_04)
CAMTUNE_NAMING_ARRAY(NamingSizeIndex, NAMING_SIZE_INDEX, CAMTUNE_NAMING_SIZE_INDEX_ROWS)

// Generic index.
#define CAMTUNE_NAMING_INDEX_6A_ROWS(ROW, array) \
    ROW(array, IDX_00) ROW(array, IDX_01) ROW(array, IDX_02) ROW(array, IDX_03) \
    ROW(array, IDX_04) ROW(array, IDX_05)
CAMTUNE_NAMING_ARRAY(NamingIndex6A, NAMING_INDEX_6A, CAMTUNE_NAMING_INDEX_6A_ROWS)

// Generic index.
#define CAMTUNE_NAMING_INDEX_10_ROWS(ROW, array) \
    ROW(array, IDX_00) ROW(array, IDX_01) ROW(array, IDX_02) ROW(array, IDX_03) \
    ROW(array, IDX_04) ROW(array, IDX_05) ROW(array, IDX_06) ROW(array, IDX_07) \
    ROW(array, IDX_08) ROW(array, IDX_09)
CAMTUNE_NAMING_ARRAY(NamingIndex10, NAMING_INDEX_10, CAMTUNE_NAMING_INDEX_10_ROWS)

// Generic index.
#define CAMTUNE_NAMING_INDEX_3_ROWS(ROW, array) \
    ROW(array, IDX_00) ROW(array, IDX_01) ROW(array, IDX_02)
CAMTUNE_NAMING_ARRAY(NamingIndex3, NAMING_INDEX_3, CAMTUNE_NAMING_INDEX_3_ROWS)

// Boolean.
#define CAMTUNE_NAMING_YES_NO_A_ROWS(ROW, array) \
    ROW(array, No) ROW(array, Yes)
CAMTUNE_NAMING_ARRAY(NamingYesNoA, NAMING_YES_NO_A, CAMTUNE_NAMING_YES_NO_A_ROWS)

// Generic index.
#define CAMTUNE_NAMING_INDEX_20_ROWS(ROW, array) \
    ROW(array, IDX_00) ROW(array, IDX_01) ROW(array, IDX_02) ROW(array, IDX_03) \
    ROW(array, IDX_04) ROW(array, IDX_05) ROW(array, IDX_06) ROW(array, IDX_07) \
    ROW(array, IDX_08) ROW(array, IDX_09) ROW(array, IDX_10) ROW(array, IDX_11) \
    ROW(array, IDX_12) ROW(array, IDX_13) ROW(array, IDX_14) ROW(array, IDX_15) \
    ROW(array, IDX_16) ROW(array, IDX_17) ROW(array, IDX_18) ROW(array, IDX_19)
CAMTUNE_NAMING_ARRAY(NamingIndex20, NAMING_INDEX_20, CAMTUNE_NAMING_INDEX_20_ROWS)

// Generic index.
#define CAMTUNE_NAMING_INDEX_6B_ROWS(ROW, array) \
    ROW(array, IDX_00) ROW(array, IDX_01) ROW(array, IDX_02) ROW(array, IDX_03) \
    ROW(array, IDX_04) ROW(array, IDX_05)
CAMTUNE_NAMING_ARRAY(NamingIndex6B, NAMING_INDEX_6B, CAMTUNE_NAMING_INDEX_6B_ROWS)

// Generic index.
#define CAMTUNE_NAMING_INDEX_5A_ROWS(ROW, array) \
    ROW(array, IDX_00) ROW(array, IDX_01) ROW(array, IDX_02) ROW(array, IDX_03) \
    ROW(array, IDX_04)
CAMTUNE_NAMING_ARRAY(NamingIndex5A, NAMING_INDEX_5A, CAMTUNE_NAMING_INDEX_5A_ROWS)

// Processing stage (hardware pass or software block).
#define CAMTUNE_NAMING_STAGE_ROWS(ROW, array) \
    ROW(array, Default) ROW(array, AFBLD_F0) ROW(array, AFBLD_F1) ROW(array, AFBLD_F2) \
    ROW(array, AFBLD_F3) ROW(array, AFBLD_F4) ROW(array, AFBLD_F5) ROW(array, AFBLD_F6) \
    ROW(array, AI_DEPTH) ROW(array, BFBLD_BASE) ROW(array, BFBLD_REF) ROW(array, BFME) \
    ROW(array, BSS) ROW(array, DPE) ROW(array, DS) ROW(array, DS_VBI_V2) ROW(array, DS_VBI_V5) \
    ROW(array, GF) ROW(array, LTR_Y2Y_Conf) ROW(array, LTR_Y2Y_F4) ROW(array, MCDS_F1) \
    ROW(array, ME_1PASS) ROW(array, ME_3PASS_MM) ROW(array, ME_3PASS_MODE0) \
    ROW(array, ME_3PASS_MODE1) ROW(array, ME_BATCH) ROW(array, ME_FW_MVP) ROW(array, MSBLD_F0) \
    ROW(array, MSBLD_F1) ROW(array, MSBLD_F2) ROW(array, MSBLD_F3) ROW(array, MSBLD_F4) \
    ROW(array, MSBLD_F5) ROW(array, MSBLD_F6) ROW(array, N3D) ROW(array, P1) ROW(array, P1_M) \
    ROW(array, P1_S) ROW(array, P1_SE) ROW(array, P2_BOK_PV) ROW(array, P2_BOK_VR) \
    ROW(array, P2_FM1_LR) ROW(array, P2_FM1_RL) ROW(array, P2_FM2_LR) ROW(array, P2_FM2_RL) \
    ROW(array, P2_IDI) ROW(array, P2_MS_F0_H) ROW(array, P2_MS_F0_PQ_DIP) \
    ROW(array, P2_MS_F0_Y_PQ_DIP) ROW(array, P2_MS_F1) ROW(array, P2_MS_F1_Y) \
    ROW(array, P2_MS_F2) ROW(array, P2_MS_F2_Y) ROW(array, P2_MS_F3) ROW(array, P2_MS_F3_Y) \
    ROW(array, P2_MS_F4) ROW(array, P2_MS_F_SMALL) ROW(array, P2_Single_debug) \
    ROW(array, P2_Single_inline) ROW(array, P2_Single) ROW(array, P2_Y2Y_PQ_DIP) \
    ROW(array, PQ_DIP_GUIDE) ROW(array, SWME) ROW(array, TR_FE1_M) ROW(array, TR_FE1_S) \
    ROW(array, TR_FE2_M) ROW(array, TR_FE2_S) ROW(array, TR_ME_L0) ROW(array, TR_ME_L1) \
    ROW(array, TR_P2_PQ_DIP) ROW(array, TR_R2Y) ROW(array, TR_Y2Y) ROW(array, TR_Y2Y_F1) \
    ROW(array, TR_Y2Y_F4) ROW(array, Traw_3rd) ROW(array, WPE_Depth_ROT) ROW(array, WPE_GF_PV) \
    ROW(array, WPE_GF_VR) ROW(array, WPE_LTR_ME_L0) ROW(array, LTR_VBI) \
    ROW(array, WPE_LTR_Y2Y_F1) ROW(array, WPE_MAP_RZ_BLUR_PV) ROW(array, WPE_MAP_RZ_BLUR_VR) \
    ROW(array, WPE_ME_L0) ROW(array, WPE_N3D_M) ROW(array, WPE_N3D_S) \
    ROW(array, WPE_P2_PQDIP_MS_F0) ROW(array, WPE_TR_Y2Y_F1) ROW(array, WPE_WghtMap) \
    ROW(array, WPEx2_P2_PQDIP_MS_F0) ROW(array, P2_MS_F1_dbg) ROW(array, P2_MS_F2_dbg) \
    ROW(array, P2_MS_F3_dbg) ROW(array, P2_MS_F4_dbg) ROW(array, P2_MS_F5_dbg) \
    ROW(array, WPE_P2_PQDIP_MS_F0_dbg) ROW(array, WPEx2_P2_PQDIP_MS_F0_dbg) \
    ROW(array, Camsys_normal) ROW(array, Camysy_se) ROW(array, Depth_fe) ROW(array, Depth_fm) \
    ROW(array, Bokeh) ROW(array, Raw2raw) ROW(array, Ainr_fe) ROW(array, Ainr_fm) \
    ROW(array, Ainr_bpc) ROW(array, Raw2yuv) ROW(array, Yuv2yuv) ROW(array, Msf_y0) \
    ROW(array, Msf_0) ROW(array, Msf_1) ROW(array, Msf_2) ROW(array, Msf_3) ROW(array, Msf_4) \
    ROW(array, Msf_5) ROW(array, Msf_6) ROW(array, Msnr_yuv2yuv) ROW(array, Mdp) \
    ROW(array, Yuv2yuv_reprocess) ROW(array, Pure_PQDIP) ROW(array, Raw_Pre_Bpc) \
    ROW(array, BssYuv_Pre) ROW(array, RefYuv_Pre) ROW(array, BssYuv_Pre_Tnc) ROW(array, Yuv_Fe) \
    ROW(array, Yuv_Fm) ROW(array, RAW_BeforeDRC) ROW(array, AIBC_RAW_PRE_BPC) \
    ROW(array, AIBC_BSSYUV_PRE) ROW(array, AIBC_BSSYUV_PRE_TNC) ROW(array, AIBC_REFYUV_PRE) \
    ROW(array, AIBC_FE) ROW(array, AIBC_FM) ROW(array, AIBC_DRC) ROW(array, AIBC_R2Y_14b_NNOut) \
    ROW(array, AIBC_R2Y_16b_DRCOut) ROW(array, AIBC_R2Y_16b_NNOut) ROW(array, AIBlend) \
    ROW(array, DRC) ROW(array, RAW_PRE_BPC) ROW(array, BSSYUV_PRE) ROW(array, BSSR2Y_PRE) \
    ROW(array, BSSYUV_PRE_TNC) ROW(array, REFYUV_PRE) ROW(array, REFR2Y_PRE) \
    ROW(array, WPE_XTR_ME_L0) ROW(array, XTR_ME_L0) ROW(array, LTR_ME_L1) \
    ROW(array, WPE_LTR_ME_L0_L1) ROW(array, TR_DSMAP) ROW(array, TR_Y2Y_Conf) \
    ROW(array, XTraw_3rd) ROW(array, XTraw_3rd_Raw) ROW(array, WPE_P2_DHZ_PQDIP_MS_F0) \
    ROW(array, WPEx2_P2_DHZ_PQDIP_MS_F0) ROW(array, P2_MS_F1_3Layer) ROW(array, P2_DHZ_SL) \
    ROW(array, DHZE_SL) ROW(array, TR_R2Y_DIP_PQDIP) ROW(array, TR_GAINMAP) ROW(array, TR_TNCS) \
    ROW(array, PQ_DIP_GUIDE_IMG) ROW(array, WPE_DPEI_M) ROW(array, WPE_DPEI_S) \
    ROW(array, WPE_DVS_DEPTH_ROT) ROW(array, WPE_DVS_CFM_ROT) ROW(array, WPE_AI_DEPTH_ROT) \
    ROW(array, WPE_AI_DEPTH_CFM_ROT) ROW(array, WPE_AI_DEPTH_PRE) ROW(array, WPE_GUIDE_IMG_PRE) \
    ROW(array, WPE_BLUR_PV) ROW(array, WPE_BLUR_VR) ROW(array, PS_LIB) ROW(array, WPE_PRE) \
    ROW(array, WPE_AINR_FRAME) ROW(array, XTR_MS) ROW(array, TR_R2Y_MS) ROW(array, P1_3rd) \
    ROW(array, TR_G2Y_3rd) ROW(array, BSSR2Y_2_PRE) ROW(array, BSSYUV_2_PRE_TNC) \
    ROW(array, REFR2Y_2_PRE) ROW(array, TR_R2R_3rd) ROW(array, TR_Y2Y_P2_PQDIP_3rd) \
    ROW(array, WPE_RSRAW) ROW(array, MSTM) ROW(array, IMAGE_SELECTION_2) ROW(array, WPE_PQDIP) \
    ROW(array, VAINR_INIT) ROW(array, VAINR_AUXI) ROW(array, VAINR_CORE)
CAMTUNE_NAMING_ARRAY(NamingStage, NAMING_STAGE, CAMTUNE_NAMING_STAGE_ROWS)

// Generic index.
#define CAMTUNE_NAMING_INDEX_5B_ROWS(ROW, array) \
    ROW(array, IDX_00) ROW(array, IDX_01) ROW(array, IDX_02) ROW(array, IDX_03) \
    ROW(array, IDX_04)
CAMTUNE_NAMING_ARRAY(NamingIndex5B, NAMING_INDEX_5B, CAMTUNE_NAMING_INDEX_5B_ROWS)

// Boolean.
#define CAMTUNE_NAMING_YES_NO_B_ROWS(ROW, array) \
    ROW(array, No) ROW(array, Yes)
CAMTUNE_NAMING_ARRAY(NamingYesNoB, NAMING_YES_NO_B, CAMTUNE_NAMING_YES_NO_B_ROWS)
// clang-format on

#undef CAMTUNE_NAMING_ENUM_ROW
#undef CAMTUNE_NAMING_TEXT_ROW
#undef CAMTUNE_NAMING_ARRAY
#undef CAMTUNE_NAMING_SCENARIO_ROWS
#undef CAMTUNE_NAMING_APP_TYPE_ROWS
#undef CAMTUNE_NAMING_SIZE_CLASS_ROWS
#undef CAMTUNE_NAMING_CAMERA_MODULE_ROWS
#undef CAMTUNE_NAMING_CUSTOM_ROWS
#undef CAMTUNE_NAMING_CAPTURE_TYPE_ROWS
#undef CAMTUNE_NAMING_FPS_ROWS
#undef CAMTUNE_NAMING_PIPE_SCENARIO_ROWS
#undef CAMTUNE_NAMING_FLASH_ROWS
#undef CAMTUNE_NAMING_FLASH_TYPE_ROWS
#undef CAMTUNE_NAMING_LATENCY_ROWS
#undef CAMTUNE_NAMING_PROJECT_ROWS
#undef CAMTUNE_NAMING_SENSOR_ID_ROWS
#undef CAMTUNE_NAMING_SENSOR_HDR_ROWS
#undef CAMTUNE_NAMING_SENSOR_MODE_ROWS
#undef CAMTUNE_NAMING_DYNAMIC_RANGE_ROWS
#undef CAMTUNE_NAMING_SIZE_INDEX_ROWS
#undef CAMTUNE_NAMING_INDEX_6A_ROWS
#undef CAMTUNE_NAMING_INDEX_10_ROWS
#undef CAMTUNE_NAMING_INDEX_3_ROWS
#undef CAMTUNE_NAMING_YES_NO_A_ROWS
#undef CAMTUNE_NAMING_INDEX_20_ROWS
#undef CAMTUNE_NAMING_INDEX_6B_ROWS
#undef CAMTUNE_NAMING_INDEX_5A_ROWS
#undef CAMTUNE_NAMING_STAGE_ROWS
#undef CAMTUNE_NAMING_INDEX_5B_ROWS
#undef CAMTUNE_NAMING_YES_NO_B_ROWS

CAMTUNE_EXPORT_END
