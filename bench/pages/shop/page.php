<?php include __DIR__ . '/header.php' ?>
<p class="path">
<?php foreach ($path as $step): ?>
<a href="<?= $step['url'] ?>"><?= htmlspecialchars($step['title'], ENT_COMPAT, 'ISO-8859-1') ?></a> /
<?php endforeach ?>
</p>
<main>
<h1><?= htmlspecialchars($title, ENT_COMPAT, 'ISO-8859-1') ?></h1>
<p><?= $found ?> articles found</p>
<aside>
<?php foreach ($facets as $facet): ?>
<fieldset><legend><?= htmlspecialchars($facet['title'], ENT_COMPAT, 'ISO-8859-1') ?></legend>
<?php foreach ($facet['values'] as $value): ?>
<label><input type="checkbox" name="<?= rawurlencode($facet['title']) ?>" value="<?= rawurlencode($value['name']) ?>"> <?= htmlspecialchars($value['name'], ENT_COMPAT, 'ISO-8859-1') ?> (<?= $value['count'] ?>)</label>
<?php endforeach ?>
</fieldset>
<?php endforeach ?>
</aside>
<ol class="products">
<?php foreach ($products as $product): ?>
<li class="product" id="p<?= $product['id'] ?>">
<?php if ($product['badge']): ?><b class="badge"><?= $product['badge'] ?></b>
<?php endif ?>
<a class="picture" href="<?= $product['url'] ?>"><img src="<?= $product['image'] ?>" alt="<?= htmlspecialchars($product['name'], ENT_COMPAT, 'ISO-8859-1') ?>" width="320" height="320" loading="lazy"></a>
<h2><a href="<?= $product['url'] ?>"><?= htmlspecialchars($product['name'], ENT_COMPAT, 'ISO-8859-1') ?></a></h2>
<p class="brand">by <?= htmlspecialchars($product['brand'], ENT_COMPAT, 'ISO-8859-1') ?></p>
<p class="text"><?= htmlspecialchars($product['text'], ENT_COMPAT, 'ISO-8859-1') ?></p>
<ul class="facts"><li>Article <?= $product['sku'] ?></li><li><?= $product['width'] ?> × <?= $product['height'] ?> cm, <?= $product['weight'] ?> kg</li><li>Made in <?= htmlspecialchars($product['origin'], ENT_COMPAT, 'ISO-8859-1') ?></li><li><a href="<?= $product['url'] ?>#care">How to care for it</a></li></ul>
<p class="rating" title="<?= $product['rating'] ?> of 5"><meter min="0" max="5" value="<?= $product['rating'] ?>"></meter> <?= $product['votes'] ?> votes</p>
<p class="price"><?php if ($product['before']): ?><s><?= $product['before'] ?> EUR</s> <?php endif ?><strong><?= $product['price'] ?> EUR</strong></p>
<?php if ($product['stock'] === 'out'): ?><p class="stock out">Back in three weeks</p>
<?php else: ?><form action="/cart" method="post"><input type="hidden" name="id" value="<?= $product['id'] ?>"><button>Add to cart</button></form>
<?php endif ?>
</li>
<?php endforeach ?>
</ol>
</main>
<?php include __DIR__ . '/footer.php' ?>
