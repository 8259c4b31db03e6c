<footer>
<ul>
<?php foreach ($links as $link): ?>
<li><a href="<?= $link['url'] ?>"><?= htmlspecialchars($link['title'], ENT_COMPAT, 'ISO-8859-1') ?></a></li>
<?php endforeach ?>
</ul>
<p>Call us: <?= $phone ?>. Prices include taxes; shipping is free of charge from 50 EUR.</p>
<p>© <?= $year ?> <?= htmlspecialchars($shop, ENT_COMPAT, 'ISO-8859-1') ?></p>
</footer>
</body>
</html>
