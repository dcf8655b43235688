#pragma once

#include <string>

// Names in StatXML documents. Some constants do not have the name of their value, or one that is
// spelled so, which is meant so.
namespace NQStatXMLTags {

// ---- Elements -----------------------------------------------------------------------------------

inline const std::string XML_ELE_ATTRIBUTE = "Attribute";
inline const std::string XML_ELE_BIVARIATEDATE = "BivariateData";
inline const std::string XML_ELE_BIVARSUMM = "BivariateSummarie";
inline const std::string XML_ELE_BIVARSUMMS = "BivariateSummaries";
inline const std::string XML_ELE_BUILDSETTINGS = "BuildSettings";
inline const std::string XML_ELE_COORDINATES = "Coordinates";
inline const std::string XML_ELE_COORDINATESGROUP = "CoordinatesGroup";
inline const std::string XML_ELE_COUNTS = "Counts";
inline const std::string XML_ELE_COVARIATE = "Covariate";
inline const std::string XML_ELE_DESMODEL = "DescriptiveModel";
inline const std::string XML_ELE_FACTOR = "Factor";
inline const std::string XML_ELE_FIELDINFO = "FieldInfo";
inline const std::string XML_ELE_FTEST = "FTest";
inline const std::string XML_ELE_INDICES = "Indices";
inline const std::string XML_ELE_ITERATION = "Iteration";
inline const std::string XML_ELE_ITERATIONHISTORY = "IterationHistory";
inline const std::string XML_ELE_LABEL = "Label";
inline const std::string XML_ELE_LISTVALUE = "ListValue";
inline const std::string XML_ELE_MAPENTRY = "MapEntry";
inline const std::string XML_ELE_MATRIX = "Matrix";
inline const std::string XML_ELE_MATRIXLABELS = "MatrixLabels";
inline const std::string XML_ELE_MESSAGE = "Message";
inline const std::string XML_ELE_MODELDIAGNOSTICS = "ModelDiagnostics";
inline const std::string XML_ELE_MODELTESTSTATS = "ModelTestStats";
inline const std::string XML_ELE_MULTIVARIATEDATA = "MultivariateData";
inline const std::string XML_ELE_MULTIVARIATEDATE = "MultivariateData";
inline const std::string XML_ELE_NUMBERFORMAT = "NumberFormat";
inline const std::string XML_ELE_PARAMESTIMATES = "ParameterEstimates";
inline const std::string XML_ELE_PARAMSTATS = "ParameterStats";
inline const std::string XML_ELE_PMMLMODEL = "PMMLModel";
inline const std::string XML_ELE_PM_COUNTS = "pm:Counts";
inline const std::string XML_ELE_PREDICTIVESUMMARY = "PredictiveSummary";
inline const std::string XML_ELE_PRINTABLE = "Printable";
inline const std::string XML_ELE_PRINTABLELIST = "PrintableList";
inline const std::string XML_ELE_PRINTABLEVALUE = "PrintableValue";
inline const std::string XML_ELE_PRINTABLEVLIST = "PrintableVList";
inline const std::string XML_ELE_RECORDINFO = "RecordInfo";
inline const std::string XML_ELE_REGRESSIONPARAM = "RegressionParameter";
inline const std::string XML_ELE_ROWCOLLABELS = "RowColLabels";
inline const std::string XML_ELE_SATAXML = "StatXML";
inline const std::string XML_ELE_SEGMENTINFO = "SegmentInfo";
inline const std::string XML_ELE_SEGMETNTDATA = "SegmentData";
inline const std::string XML_ELE_STATISTIC = "Statistic";
inline const std::string XML_ELE_STRINGFORMAT = "StringFormat";
inline const std::string XML_ELE_STRINGMAP = "StringMap";
inline const std::string XML_ELE_STRUCTUREDDATE = "StructuredData";
inline const std::string XML_ELE_STRUCTUREDVALUE = "StructuredValue";
inline const std::string XML_ELE_TRAININGSUMMARY = "TrainingSummary";
inline const std::string XML_ELE_UNIVARIATEDATE = "UnivariateData";
inline const std::string XML_ELE_XMLMODEL = "xml";

// ---- Attributes ---------------------------------------------------------------------------------

inline const std::string XML_ATT_BADWEIGHTCOUNT = "badWeightCount";
inline const std::string XML_ATT_BLOCKNUM = "block";
inline const std::string XML_ATT_CHISQUARE = "chiSquare";
inline const std::string XML_ATT_CONFINTERVALLOWER = "confIntervalLower";
inline const std::string XML_ATT_CONFINTERVALUPPER = "confIntervalUpper";
inline const std::string XML_ATT_COUNT = "count";
inline const std::string XML_ATT_DATANAME = "dataName";
inline const std::string XML_ATT_DATAUSAGE = "dataUsage";
inline const std::string XML_ATT_DECIMALPLACES = "decimalPlaces";
inline const std::string XML_ATT_DECIMALSYMBOL = "decimalSymbol";
inline const std::string XML_ATT_DEPENDFIELD = "dependentField";
inline const std::string XML_ATT_DF1 = "df1";
inline const std::string XML_ATT_DF2 = "df2";
inline const std::string XML_ATT_DIMENTION = "dimension";
inline const std::string XML_ATT_DROPPEDCOUNT = "droppedCount";
inline const std::string XML_ATT_DROPPEDFREQ = "droppedFreq";
inline const std::string XML_ATT_ESTIMATE = "estimate";
inline const std::string XML_ATT_EXPCILOWER = "expCILower";
inline const std::string XML_ATT_EXPCIUPPER = "expCIUpper";
inline const std::string XML_ATT_EXPESTIMATE = "expEstimate";
inline const std::string XML_ATT_FIELDA = "fieldA";
inline const std::string XML_ATT_FIELDB = "fieldB";
inline const std::string XML_ATT_FIELDNAME = "fieldName";
inline const std::string XML_ATT_FIELDVALUE = "fieldValue";
inline const std::string XML_ATT_FORMATTYPE = "formatType";
inline const std::string XML_ATT_FSTATISTIC = "fStatistic";
inline const std::string XML_ATT_GROUPINGSYMBOL = "groupingSymbol";
inline const std::string XML_ATT_HEXADECIMAL = "hexadecimal";
inline const std::string XML_ATT_ISINTERCEPT = "isIntercept";
inline const std::string XML_ATT_ISKEY = "isKey";
inline const std::string XML_ATT_ISNULL = "isNull";
inline const std::string XML_ATT_ISREDUNDANT = "isRedundant";
inline const std::string XML_ATT_ITERATIONNUMBER = "iterationNumber";
inline const std::string XML_ATT_MAPID = "mapId";
inline const std::string XML_ATT_MAPNAME = "name";
inline const std::string XML_ATT_MODELID = "modelID";
inline const std::string XML_ATT_MODELTYPE = "modelType";
inline const std::string XML_ATT_NBCOLS = "nbCols";
inline const std::string XML_ATT_NBROWS = "nbRows";
inline const std::string XML_ATT_NEST = "nest";
inline const std::string XML_ATT_PARAMINDEX = "paramIndex";
inline const std::string XML_ATT_PARAMLABEL = "paramLabel";
inline const std::string XML_ATT_PARAMNAME = "paramName";
inline const std::string XML_ATT_PATTERN = "pattern";
inline const std::string XML_ATT_POWER = "power";
inline const std::string XML_ATT_RECORDID = "recordId";
inline const std::string XML_ATT_RECORDLABEL = "recordLabel";
inline const std::string XML_ATT_ROWMAJOR = "rowMajor";
inline const std::string XML_ATT_SEGMENTID = "segmentID";
inline const std::string XML_ATT_SIG = "sig";
inline const std::string XML_ATT_STATISTIC = "statistic";
inline const std::string XML_ATT_STDERROR = "stdError";
inline const std::string XML_ATT_STORAGE = "storage";
inline const std::string XML_ATT_TARGETFIELD = "targetField";
inline const std::string XML_ATT_TESTID = "testID";
inline const std::string XML_ATT_TESTTYPE = "testType";
inline const std::string XML_ATT_TOTALCOUNT = "totalCount";
inline const std::string XML_ATT_TOTALFREQ = "totalFreq";
inline const std::string XML_ATT_TTEST = "tTest";
inline const std::string XML_ATT_WIDTH = "width";
inline const std::string XML_ATT_XMLNS = "xmlns";
inline const std::string XML_ATT_ZTEST = "zTest";

// ---- Values -------------------------------------------------------------------------------------

inline const std::string XML_VAL_ACCURACY = "accuracy";
inline const std::string XML_VAL_ALGORITHMNAME = "algorithmName";
inline const std::string XML_VAL_ANY = "any";
inline const std::string XML_VAL_BINSCAPLOT = "binnedScatterPlot";
inline const std::string XML_VAL_BOTH = "both";
inline const std::string XML_VAL_BUILDMODELFAILEDERR = "BuildModelFailedErr";
inline const std::string XML_VAL_CHITEST = "ChiTest";
inline const std::string XML_VAL_COL = "col";
inline const std::string XML_VAL_CONDIMEAN = "conditionalMean";
inline const std::string XML_VAL_COVARIANCE = "covariance";
inline const std::string XML_VAL_CRAMERSV = "cramersV";
inline const std::string XML_VAL_Crosstabulation = "Crosstabulation";
inline const std::string XML_VAL_DATAUSAGE_TESTING = "testing";
inline const std::string XML_VAL_DATAUSAGE_TRAINING = "training";
inline const std::string XML_VAL_DATAUSAGE_VERIFICATING = "verificating";
inline const std::string XML_VAL_DIAGONAL = "diagonal";
inline const std::string XML_VAL_EFFECTSIZE = "effectSize";
inline const std::string XML_VAL_ERROR = "error";
inline const std::string XML_VAL_ETA = "eta";
inline const std::string XML_VAL_ETASQUARED = "etaSquared";
inline const std::string XML_VAL_FALSE = "false";
inline const std::string XML_VAL_FIELDS = "Fields";
inline const std::string XML_VAL_FIXEDEFFECTINDEX = "fixedEffectIndex";
inline const std::string XML_VAL_LOCAL = "local";
inline const std::string XML_VAL_LOWERCIEFFECTSIZE = "lowerCIEffectSize";
inline const std::string XML_VAL_LOWERCIETASQUARED = "lowerCIEtaSquared";
inline const std::string XML_VAL_LOWERCIPARTIALETASQUARED = "lowerCIPartialEtaSquared";
inline const std::string XML_VAL_MEANSQUARE = "meanSquare";
inline const std::string XML_VAL_MODELEFFECT = "modelEffect";
inline const std::string XML_VAL_MODELSIZE = "modelSize";
inline const std::string XML_VAL_NESTINGLEVELS = "NestingLevels";
inline const std::string XML_VAL_OBSERVED = "observed";
inline const std::string XML_VAL_ONEWAYAVOFT = "oneWayAnovaFTest";
inline const std::string XML_VAL_PARTIALETASQUARED = "partialEtaSquared";
inline const std::string XML_VAL_PEARSONCHISQUARE = "pearsonChiSquare";
inline const std::string XML_VAL_PEARSONSR = "pearsonsR";
inline const std::string XML_VAL_PREDICTORS = "predictors";
inline const std::string XML_VAL_REAL = "real";
inline const std::string XML_VAL_ROW = "row";
inline const std::string XML_VAL_SPEARMANCORRELATION = "spearmanCorrelationh";
inline const std::string XML_VAL_STANDARD = "standard";
inline const std::string XML_VAL_STATISTIC = "statistic";
inline const std::string XML_VAL_STATSEACHCAT = "statisticWithinEachCategory";
inline const std::string XML_VAL_STRING = "string";
inline const std::string XML_VAL_SUMOFSQUARES = "sumOfSquares";
inline const std::string XML_VAL_SYMMETRIC = "symmetric";
inline const std::string XML_VAL_THEORETICALFREQUENCIES = "theoreticalFrequencies";
inline const std::string XML_VAL_TOTALPAIRS = "totalPairs";
inline const std::string XML_VAL_TRUE = "true";
inline const std::string XML_VAL_TYPEIII = "III";
inline const std::string XML_VAL_UPPERCIEFFECTSIZE = "upperCIEffectSize";
inline const std::string XML_VAL_UPPERCIETASQUARED = "upperCIEtaSquared";
inline const std::string XML_VAL_UPPERCIPARTIALETASQUARED = "upperCIPartialEtaSquared";
inline const std::string XML_VAL_VARIANCE = "variance";
inline const std::string XML_VAL_WARNING = "warning";
inline const std::string XML_VAL_XMLVERSION = "1.0";
inline const std::string XML_VAL_frequency = "frequency";

// ---- Documents ----------------------------------------------------------------------------------

inline const std::string XML_VAL_XMLNS = "http://nqcommon.example/xmlns/statxml-7.0";
inline const std::string XML_VAL_SCHEMALOCATION = XML_VAL_XMLNS + " statxml-7-0.xsd";
inline const std::string XML_VAL_HEADRIGHT = "Copyright (c) 2026 the nqcommon authors";

}  // namespace NQStatXMLTags
