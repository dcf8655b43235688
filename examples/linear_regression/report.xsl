<?xml version="1.0" encoding="UTF-8"?>
<!-- One self-contained HTML page of the StatXML document of a linear regression. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
                xmlns:s="http://nqcommon.example/xmlns/statxml-7.0" exclude-result-prefixes="s">
<xsl:output method="html" encoding="UTF-8" doctype-system="about:legacy-compat" indent="no"/>

<!-- ==== Page ================================================================================== -->

<xsl:template match="/s:StatXML">
  <xsl:variable name="target" select="s:TrainingSummary/@targetField"/>
  <html lang="en">
    <head>
      <meta name="viewport" content="width=device-width, initial-scale=1"/>
      <title>Linear regression of <xsl:value-of select="$target"/></title>
      <style>
        :root { --ink: #1d2733; --soft: #5d6b7a; --line: #dfe5ec; --bar: #3b7dc4; --paper: #ffffff;
                --ground: #f4f6f9; --mark: #c8553d; }
        @media (prefers-color-scheme: dark) {
          :root { --ink: #e6ebf1; --soft: #9aa8b7; --line: #313b47; --bar: #6ba6e5; --paper: #1b222b;
                  --ground: #12171d; --mark: #f08c72; } }
        body { margin: 0; background: var(--ground); color: var(--ink);
               font: 15px/1.5 system-ui, "Segoe UI", "DejaVu Sans", sans-serif; }
        main { max-width: 1080px; margin: 0 auto; padding: 32px 24px 48px; }
        h1 { font-size: 26px; margin: 0; } h1 b { color: var(--bar); font-weight: inherit; }
        h2 { font-size: 18px; margin: 32px 0 12px; }
        p { margin: 4px 0; color: var(--soft); } .card p { font-size: 13px; }
        .tiles { display: grid; grid-template-columns: repeat(auto-fit, minmax(155px, 1fr)); gap: 12px;
                 margin-top: 20px; }
        .charts { display: grid; grid-template-columns: repeat(auto-fill, minmax(320px, 1fr));
                  gap: 16px; }
        .card { background: var(--paper); border: 1px solid var(--line); border-radius: 8px;
                padding: 12px 16px; overflow-x: auto; }
        .tiles dt { color: var(--soft); font-size: 13px; } .tiles dl, .tiles dd { margin: 0; }
        .tiles dd { font-size: 20px; font-variant-numeric: tabular-nums; white-space: nowrap; }
        .tiles small { display: block; font-size: 12px; color: var(--soft); }
        table { border-collapse: collapse; width: 100%; font-variant-numeric: tabular-nums; }
        th { color: var(--soft); font-weight: 600; font-size: 13px; }
        th, td { padding: 5px 10px; text-align: right; white-space: nowrap; }
        th:first-child, td:first-child { text-align: left; }
        tbody tr { border-top: 1px solid var(--line); }
        .redundant td { color: var(--soft); font-style: italic; }
        .matrix { font-size: 12px; } .matrix td, .matrix th { padding: 3px 8px; }
        svg { display: block; width: 100%; height: auto; }
        svg text { font-size: 11px; fill: var(--soft); } svg .name { fill: var(--ink); }
        .bar { fill: var(--bar); } .axis { stroke: var(--line); stroke-width: 1; }
        .interval { stroke: var(--bar); stroke-width: 2; } .point { fill: var(--bar); }
        .away .interval { stroke: var(--mark); } .away .point { fill: var(--mark); }
        h3 { font-size: 14px; margin: 0 0 8px; } sup { font-size: 0.7em; line-height: 0; }
      </style>
    </head>
    <body>
      <main>
        <h1>Linear regression of <b><xsl:value-of select="$target"/></b></h1>
        <xsl:apply-templates select="s:TrainingSummary"/>
        <h2>Coefficients</h2>
        <div class="card"><xsl:apply-templates select="s:ParameterEstimates"/></div>
        <h2>How far from zero</h2>
        <div class="card"><xsl:apply-templates select="s:ParameterEstimates" mode="chart"/></div>
        <xsl:if test="s:UnivariateData">
          <h2>Inputs</h2>
          <div class="charts"><xsl:apply-templates select="s:UnivariateData"/></div>
        </xsl:if>
        <h2>Covariances of the estimates</h2>
        <div class="card"><xsl:apply-templates select="s:Matrix"/></div>
      </main>
    </body>
  </html>
</xsl:template>

<xsl:template match="s:TrainingSummary">
  <xsl:variable name="counts" select="s:Counts"/>
  <p>
    <xsl:value-of select="s:Statistic[@name='rowsUsed']/@value"/> rows used
    <xsl:if test="$counts/@totalFreq != s:Statistic[@name='rowsUsed']/@value">
      <xsl:text> for </xsl:text><xsl:value-of select="$counts/@totalFreq"/> cases
    </xsl:if>
    <xsl:text> · </xsl:text><xsl:value-of select="$counts/@missingFreq"/> dropped for a missing cell
    <xsl:if test="$counts/@invalidFreq &gt; 0">
      <xsl:text> · </xsl:text><xsl:value-of select="$counts/@invalidFreq"/> for their weight
    </xsl:if>
    <xsl:if test="@isIntercept = 'false'"> · without intercept: R² and F are about zero</xsl:if>
  </p>
  <div class="tiles">
    <xsl:call-template name="tile">
      <xsl:with-param name="name">R²</xsl:with-param>
      <xsl:with-param name="value" select="s:Statistic[@name='rSquared']/@value"/>
    </xsl:call-template>
    <xsl:call-template name="tile">
      <xsl:with-param name="name">Adjusted R²</xsl:with-param>
      <xsl:with-param name="value" select="s:Statistic[@name='adjustedRSquared']/@value"/>
    </xsl:call-template>
    <xsl:call-template name="tile">
      <xsl:with-param name="name">Residual std. deviation</xsl:with-param>
      <xsl:with-param name="value" select="s:Statistic[@name='residualStdDev']/@value"/>
      <xsl:with-param name="note"
                      select="concat('df ', s:Statistic[@name='dfResidual']/@value)"/>
    </xsl:call-template>
    <xsl:call-template name="tile">
      <xsl:with-param name="name">F</xsl:with-param>
      <xsl:with-param name="value" select="../s:FTest/@fStatistic"/>
      <xsl:with-param name="note" select="concat('df ', ../s:FTest/@df1, ' and ', ../s:FTest/@df2)"/>
    </xsl:call-template>
    <xsl:call-template name="tile">
      <xsl:with-param name="name">Significance of F</xsl:with-param>
      <xsl:with-param name="value" select="../s:FTest/@sig"/>
    </xsl:call-template>
  </div>
</xsl:template>

<xsl:template name="tile">
  <xsl:param name="name"/>
  <xsl:param name="value"/>
  <xsl:param name="note"/>
  <div class="card">
    <dl>
      <dt><xsl:value-of select="$name"/></dt>
      <dd>
        <xsl:call-template name="figure"><xsl:with-param name="x" select="$value"/></xsl:call-template>
        <small><xsl:value-of select="$note"/></small>
      </dd>
    </dl>
  </div>
</xsl:template>

<!-- ==== Tables ================================================================================ -->

<xsl:template match="s:ParameterEstimates">
  <table>
    <thead>
      <tr><th>Parameter</th><th>Estimate</th><th>Std. error</th><th>t</th><th>Significance</th>
        <th>Lower 95%</th><th>Upper 95%</th></tr>
    </thead>
    <tbody><xsl:apply-templates select="s:ParameterStats"/></tbody>
  </table>
</xsl:template>

<xsl:template match="s:ParameterStats">
  <tr>
    <td><xsl:value-of select="@paramName"/></td>
    <td><xsl:call-template name="figure">
      <xsl:with-param name="x" select="@estimate"/></xsl:call-template></td>
    <td><xsl:call-template name="figure">
      <xsl:with-param name="x" select="@stdError"/></xsl:call-template></td>
    <td><xsl:call-template name="figure">
      <xsl:with-param name="x" select="@tTest"/></xsl:call-template></td>
    <td><xsl:call-template name="figure">
      <xsl:with-param name="x" select="@sig"/></xsl:call-template></td>
    <td><xsl:call-template name="figure">
      <xsl:with-param name="x" select="@confIntervalLower"/></xsl:call-template></td>
    <td><xsl:call-template name="figure">
      <xsl:with-param name="x" select="@confIntervalUpper"/></xsl:call-template></td>
  </tr>
</xsl:template>

<xsl:template match="s:ParameterStats[@isRedundant = 'true']">
  <tr class="redundant">
    <td><xsl:value-of select="@paramName"/></td>
    <td colspan="6">redundant: a combination of the parameters before it</td>
  </tr>
</xsl:template>

<!-- The lower triangle of a symmetric matrix. -->
<xsl:template match="s:Matrix">
  <xsl:variable name="labels" select="s:MatrixLabels/s:RowColLabels/s:Label"/>
  <xsl:choose>
    <xsl:when test="@nbRows &gt; 30">
      <p>The matrix has <xsl:value-of select="@nbRows"/> rows; it is in the StatXML document.</p>
    </xsl:when>
    <xsl:otherwise>
      <table class="matrix">
        <thead>
          <tr>
            <th/>
            <xsl:for-each select="$labels">
              <th title="{.}">
                <xsl:call-template name="short"><xsl:with-param name="text" select="."/></xsl:call-template>
              </th>
            </xsl:for-each>
          </tr>
        </thead>
        <tbody>
          <xsl:for-each select="s:Array">
            <xsl:variable name="row" select="position()"/>
            <tr>
              <td><xsl:value-of select="$labels[$row]"/></td>
              <xsl:call-template name="cells"><xsl:with-param name="list" select="."/></xsl:call-template>
            </tr>
          </xsl:for-each>
        </tbody>
      </table>
    </xsl:otherwise>
  </xsl:choose>
</xsl:template>

<xsl:template name="cells">
  <xsl:param name="list"/>
  <xsl:if test="$list != ''">
    <td>
      <xsl:call-template name="figure">
        <xsl:with-param name="x" select="substring-before(concat($list, ' '), ' ')"/>
      </xsl:call-template>
    </td>
    <xsl:call-template name="cells">
      <xsl:with-param name="list" select="substring-after($list, ' ')"/>
    </xsl:call-template>
  </xsl:if>
</xsl:template>

<!-- ==== Charts ================================================================================ -->

<!-- Estimates and 95% bounds in standard errors: half the width of a bound is nearly the same for
     all, so that parameters of any unit share an axis. -->
<xsl:template match="s:ParameterEstimates" mode="chart">
  <xsl:variable name="shown" select="s:ParameterStats[@tTest]"/>
  <xsl:variable name="reach">
    <xsl:for-each select="$shown">
      <xsl:sort select="@tTest * (1 - 2 * (@tTest &lt; 0))" data-type="number" order="descending"/>
      <xsl:if test="position() = 1">
        <xsl:value-of select="@tTest * (1 - 2 * (@tTest &lt; 0))
                              + (@confIntervalUpper - @estimate) div @stdError"/>
      </xsl:if>
    </xsl:for-each>
  </xsl:variable>
  <xsl:variable name="scale" select="330 div $reach"/>
  <xsl:variable name="height" select="count($shown) * 24"/>
  <p>Estimate and 95% bounds, in standard errors of the estimate; marked where the bounds leave zero
    out.</p>
  <xsl:if test="$shown">
    <svg viewBox="0 0 960 {$height + 8}" role="img" aria-label="estimates and bounds">
      <line class="axis" x1="560" x2="560" y1="0" y2="{$height}"/>
      <xsl:for-each select="$shown">
        <xsl:variable name="y" select="position() * 24 - 10"/>
        <xsl:variable name="half" select="(@confIntervalUpper - @estimate) div @stdError"/>
        <g>
          <xsl:if test="@confIntervalLower &gt; 0 or @confIntervalUpper &lt; 0">
            <xsl:attribute name="class">away</xsl:attribute>
          </xsl:if>
          <text class="name" x="200" y="{$y + 4}" text-anchor="end">
            <xsl:call-template name="short">
              <xsl:with-param name="text" select="@paramName"/>
              <xsl:with-param name="most" select="28"/>
            </xsl:call-template>
          </text>
          <line class="interval" x1="{560 + (@tTest - $half) * $scale}"
                x2="{560 + (@tTest + $half) * $scale}" y1="{$y}" y2="{$y}"/>
          <circle class="point" cx="{560 + @tTest * $scale}" cy="{$y}" r="4"/>
          <text x="950" y="{$y + 4}" text-anchor="end"><xsl:value-of select="translate(format-number(@tTest, '0.00'), '-', '−')"/></text>
        </g>
      </xsl:for-each>
    </svg>
  </xsl:if>
</xsl:template>

<!-- A histogram: the bins are told by three of its statistics, a bar by the mean in its bin. -->
<xsl:template match="s:UnivariateData[s:Statistic[@name='bins']]">
  <xsl:variable name="min" select="s:Statistic[@name='minimum']/@value"/>
  <xsl:variable name="max" select="s:Statistic[@name='maximum']/@value"/>
  <xsl:variable name="bins" select="s:Statistic[@name='bins']/@value"/>
  <div class="card">
    <h3><xsl:value-of select="@description"/></h3>
    <svg viewBox="0 0 320 170" role="img" aria-label="histogram of {@description}">
      <xsl:call-template name="histogram-bars">
        <xsl:with-param name="means" select="s:Coordinates[1]/s:Array"/>
        <xsl:with-param name="counts" select="s:Coordinates[2]/s:Array"/>
        <xsl:with-param name="min" select="$min"/>
        <xsl:with-param name="length" select="($max - $min) div $bins"/>
        <xsl:with-param name="bins" select="$bins"/>
        <xsl:with-param name="most">
          <xsl:call-template name="largest">
            <xsl:with-param name="list" select="s:Coordinates[2]/s:Array"/>
          </xsl:call-template>
        </xsl:with-param>
      </xsl:call-template>
      <line class="axis" x1="0" x2="320" y1="150.5" y2="150.5"/>
      <text x="0" y="165"><xsl:call-template name="plain"><xsl:with-param name="x" select="$min"/></xsl:call-template></text>
      <text x="320" y="165" text-anchor="end"><xsl:call-template name="plain"><xsl:with-param name="x" select="$max"/></xsl:call-template></text>
    </svg>
    <p>mean <xsl:call-template name="figure">
      <xsl:with-param name="x" select="s:Statistic[@name='mean']/@value"/></xsl:call-template>
      <xsl:text> · std. deviation </xsl:text><xsl:call-template name="figure">
      <xsl:with-param name="x" select="s:Statistic[@name='stdDeviation']/@value"/></xsl:call-template></p>
  </div>
</xsl:template>

<xsl:template name="histogram-bars">
  <xsl:param name="means"/>
  <xsl:param name="counts"/>
  <xsl:param name="min"/>
  <xsl:param name="length"/>
  <xsl:param name="bins"/>
  <xsl:param name="most"/>
  <xsl:if test="$means != ''">
    <xsl:variable name="mean" select="substring-before(concat($means, ' '), ' ')"/>
    <xsl:variable name="count" select="substring-before(concat($counts, ' '), ' ')"/>
    <xsl:variable name="found" select="floor(($mean - $min) div $length)"/>
    <xsl:variable name="bin">
      <xsl:choose>
        <xsl:when test="$bins = 1 or not($found &gt; 0)">0</xsl:when>
        <xsl:when test="$found &gt;= $bins"><xsl:value-of select="$bins - 1"/></xsl:when>
        <xsl:otherwise><xsl:value-of select="$found"/></xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <xsl:variable name="height" select="$count div $most * 145"/>
    <rect class="bar" x="{$bin * 320 div $bins + 1}" width="{320 div $bins - 2}"
          y="{150 - $height}" height="{$height}">
      <title><xsl:value-of select="concat($count, ' cases, mean ', $mean)"/></title>
    </rect>
    <xsl:call-template name="histogram-bars">
      <xsl:with-param name="means" select="substring-after($means, ' ')"/>
      <xsl:with-param name="counts" select="substring-after($counts, ' ')"/>
      <xsl:with-param name="min" select="$min"/>
      <xsl:with-param name="length" select="$length"/>
      <xsl:with-param name="bins" select="$bins"/>
      <xsl:with-param name="most" select="$most"/>
    </xsl:call-template>
  </xsl:if>
</xsl:template>

<!-- A bar chart, of the first 25 categories. -->
<xsl:template match="s:UnivariateData">
  <xsl:variable name="n" select="s:Coordinates[1]/s:Array/@n"/>
  <xsl:variable name="shown" select="25 * ($n &gt; 25) + $n * ($n &lt;= 25)"/>
  <div class="card">
    <h3><xsl:value-of select="@description"/></h3>
    <svg viewBox="0 0 320 {$shown * 22 + 4}" role="img" aria-label="bar chart of {@description}">
      <xsl:call-template name="bars">
        <xsl:with-param name="labels" select="s:Coordinates[1]/s:Array"/>
        <xsl:with-param name="counts" select="s:Coordinates[2]/s:Array"/>
        <xsl:with-param name="left" select="$shown"/>
        <xsl:with-param name="most">
          <xsl:call-template name="largest">
            <xsl:with-param name="list" select="s:Coordinates[2]/s:Array"/>
          </xsl:call-template>
        </xsl:with-param>
      </xsl:call-template>
    </svg>
    <p>categories: <xsl:value-of select="$n"/><xsl:if test="$n &gt; $shown">, the first <xsl:value-of select="$shown"/> shown</xsl:if></p>
  </div>
</xsl:template>

<xsl:template name="bars">
  <xsl:param name="labels"/>
  <xsl:param name="counts"/>
  <xsl:param name="left"/>
  <xsl:param name="most"/>
  <xsl:param name="y" select="0"/>
  <xsl:if test="$left &gt; 0">
    <xsl:variable name="quoted" select="starts-with($labels, '&quot;')"/>
    <xsl:variable name="length">
      <xsl:choose>
        <xsl:when test="$quoted">
          <xsl:call-template name="quoted-length">
            <xsl:with-param name="rest" select="substring($labels, 2)"/>
          </xsl:call-template>
        </xsl:when>
        <xsl:otherwise>
          <xsl:value-of select="string-length(substring-before(concat($labels, ' '), ' '))"/>
        </xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <xsl:variable name="label">
      <xsl:call-template name="unescaped">
        <xsl:with-param name="text" select="substring($labels, 1 + $quoted, $length)"/>
      </xsl:call-template>
    </xsl:variable>
    <xsl:variable name="count" select="substring-before(concat($counts, ' '), ' ')"/>
    <text class="name" x="112" y="{$y + 15}" text-anchor="end">
      <xsl:call-template name="short"><xsl:with-param name="text" select="$label"/></xsl:call-template>
    </text>
    <rect class="bar" x="118" y="{$y + 3}" height="16" width="{$count div $most * 145}">
      <title><xsl:value-of select="concat($label, ': ', $count)"/></title>
    </rect>
    <text x="{$count div $most * 145 + 122}" y="{$y + 15}"><xsl:call-template name="plain"><xsl:with-param name="x" select="$count"/></xsl:call-template></text>
    <xsl:call-template name="bars">
      <xsl:with-param name="labels" select="substring($labels, $length + 2 * (1 + $quoted))"/>
      <xsl:with-param name="counts" select="substring-after($counts, ' ')"/>
      <xsl:with-param name="left" select="$left - 1"/>
      <xsl:with-param name="most" select="$most"/>
      <xsl:with-param name="y" select="$y + 22"/>
    </xsl:call-template>
  </xsl:if>
</xsl:template>

<!-- ==== Lists ================================================================================= -->

<!-- The characters before the quote that ends a quoted item, escaped ones with their backslashes. -->
<xsl:template name="quoted-length">
  <xsl:param name="rest"/>
  <xsl:param name="length" select="0"/>
  <xsl:variable name="item" select="substring-before($rest, '&quot;')"/>
  <xsl:choose>
    <xsl:when test="contains($item, '\')">
      <xsl:variable name="pair" select="string-length(substring-before($item, '\')) + 2"/>
      <xsl:call-template name="quoted-length">
        <xsl:with-param name="rest" select="substring($rest, $pair + 1)"/>
        <xsl:with-param name="length" select="$length + $pair"/>
      </xsl:call-template>
    </xsl:when>
    <xsl:otherwise><xsl:value-of select="$length + string-length($item)"/></xsl:otherwise>
  </xsl:choose>
</xsl:template>

<!-- Without the backslashes that stand before quotes and backslashes. -->
<xsl:template name="unescaped">
  <xsl:param name="text"/>
  <xsl:choose>
    <xsl:when test="contains($text, '\')">
      <xsl:variable name="rest" select="substring-after($text, '\')"/>
      <xsl:value-of select="concat(substring-before($text, '\'), substring($rest, 1, 1))"/>
      <xsl:call-template name="unescaped">
        <xsl:with-param name="text" select="substring($rest, 2)"/>
      </xsl:call-template>
    </xsl:when>
    <xsl:otherwise><xsl:value-of select="$text"/></xsl:otherwise>
  </xsl:choose>
</xsl:template>

<xsl:template name="largest">
  <xsl:param name="list"/>
  <xsl:param name="most" select="0"/>
  <xsl:variable name="x" select="substring-before(concat($list, ' '), ' ')"/>
  <xsl:choose>
    <xsl:when test="$list = ''"><xsl:value-of select="$most"/></xsl:when>
    <xsl:otherwise>
      <xsl:call-template name="largest">
        <xsl:with-param name="list" select="substring-after($list, ' ')"/>
        <xsl:with-param name="most" select="$x * ($x &gt; $most) + $most * not($x &gt; $most)"/>
      </xsl:call-template>
    </xsl:otherwise>
  </xsl:choose>
</xsl:template>

<xsl:template name="short">
  <xsl:param name="text"/>
  <xsl:param name="most" select="15"/>
  <xsl:value-of select="substring($text, 1, $most)"/>
  <xsl:if test="string-length($text) &gt; $most">…</xsl:if>
</xsl:template>

<!-- ==== Numbers =============================================================================== -->

<!-- Six significant digits; a dash where there is no figure. -->
<xsl:template name="figure">
  <xsl:param name="x"/>
  <xsl:variable name="n" select="number($x)"/>
  <xsl:variable name="size" select="$n * (1 - 2 * ($n &lt; 0))"/>
  <xsl:choose>
    <xsl:when test="not($n = $n)">–</xsl:when>
    <xsl:when test="$n = 0">0</xsl:when>
    <xsl:otherwise>
      <xsl:variable name="exponent">
        <xsl:call-template name="exponent"><xsl:with-param name="size" select="$size"/></xsl:call-template>
      </xsl:variable>
      <xsl:choose>
        <xsl:when test="$exponent &gt;= 6 and $exponent &lt; 12"><xsl:value-of select="translate(format-number($n, '0'), '-', '−')"/></xsl:when>
        <xsl:when test="$exponent &gt;= -5 and $exponent &lt; 6">
          <xsl:variable name="digits" select="substring('0.##########', 1, 7 - $exponent - ($exponent = 5))"/>
          <xsl:value-of select="translate(format-number($n, translate($digits, '#', '0')), '-', '−')"/>
        </xsl:when>
        <xsl:otherwise>
          <xsl:variable name="mantissa">
            <xsl:call-template name="mantissa">
              <xsl:with-param name="n" select="$n"/>
              <xsl:with-param name="exponent" select="$exponent"/>
            </xsl:call-template>
          </xsl:variable>
          <xsl:value-of select="translate(format-number($mantissa, '0.00000'), '-', '−')"/>
          <xsl:text>·10</xsl:text><sup><xsl:value-of select="translate($exponent, '-', '−')"/></sup>
        </xsl:otherwise>
      </xsl:choose>
    </xsl:otherwise>
  </xsl:choose>
</xsl:template>

<!-- The same as text alone, for charts. -->
<xsl:template name="plain">
  <xsl:param name="x"/>
  <xsl:variable name="size" select="$x * (1 - 2 * ($x &lt; 0))"/>
  <xsl:choose>
    <xsl:when test="$size &gt;= 1000000000 or ($size &gt; 0 and $size &lt; 0.001)"><xsl:value-of select="$x"/></xsl:when>
    <xsl:when test="$size &gt;= 1000"><xsl:value-of select="translate(format-number($x, '0.#'), '-', '−')"/></xsl:when>
    <xsl:otherwise><xsl:value-of select="translate(format-number($x, '0.####'), '-', '−')"/></xsl:otherwise>
  </xsl:choose>
</xsl:template>

<xsl:template name="exponent">
  <xsl:param name="size"/>
  <xsl:param name="exponent" select="0"/>
  <xsl:choose>
    <xsl:when test="$size &gt;= 10 and $exponent &lt; 400">
      <xsl:call-template name="exponent">
        <xsl:with-param name="size" select="$size div 10"/>
        <xsl:with-param name="exponent" select="$exponent + 1"/>
      </xsl:call-template>
    </xsl:when>
    <xsl:when test="$size &lt; 1 and $exponent &gt; -400">
      <xsl:call-template name="exponent">
        <xsl:with-param name="size" select="$size * 10"/>
        <xsl:with-param name="exponent" select="$exponent - 1"/>
      </xsl:call-template>
    </xsl:when>
    <xsl:otherwise><xsl:value-of select="$exponent"/></xsl:otherwise>
  </xsl:choose>
</xsl:template>

<xsl:template name="mantissa">
  <xsl:param name="n"/>
  <xsl:param name="exponent"/>
  <xsl:choose>
    <xsl:when test="$exponent &gt; 0">
      <xsl:call-template name="mantissa">
        <xsl:with-param name="n" select="$n div 10"/>
        <xsl:with-param name="exponent" select="$exponent - 1"/>
      </xsl:call-template>
    </xsl:when>
    <xsl:when test="$exponent &lt; 0">
      <xsl:call-template name="mantissa">
        <xsl:with-param name="n" select="$n * 10"/>
        <xsl:with-param name="exponent" select="$exponent + 1"/>
      </xsl:call-template>
    </xsl:when>
    <xsl:otherwise><xsl:value-of select="$n"/></xsl:otherwise>
  </xsl:choose>
</xsl:template>
</xsl:stylesheet>
